// Dates as comment files write them: a comment's date as its day number (days since 30 December
// 1899, the fraction the time of day) and the last spell check as "dd/mm/yyyy hh:nn:ss". Both
// are read and written in UTC, to whole seconds, so that a file reads back to the same text
// wherever it is opened.
#pragma once

#include <string>
#include <string_view>

#include "kavrel/Variant.h"

namespace kv::contentdate {

// The day number in its shortest decimal form: "45000", "45000.5".
std::string DayNumber(DateTime date);
// The date of a day number; fails with "Type mismatch" on text that is not a number, and with
// "Overflow" outside the years 1700 to 2199.
DateTime FromDayNumber(std::string_view text);

std::string CheckDate(DateTime date);
// Reads "dd/mm/yyyy hh:nn:ss" or "dd/mm/yyyy" of the years 1700 to 2199; fails with "Type
// mismatch" on anything else.
DateTime FromCheckDate(std::string_view text);

}  // namespace kv::contentdate
