// Code that a plug-in has coloured itself, because it read the code with a real parser: beside the
// code text goes a colour string of the same length, one letter for each byte of the text. Blanks
// and line ends (" ", "\t", "\r", "\n") are written as themselves; any letter not listed here
// reads as plain text. A template shows such code without running a language definition over it.
#pragma once

namespace kv::colour {

inline constexpr char Plain = '.';
inline constexpr char Keyword = 'k';       // "const", "return"
inline constexpr char Type = 't';          // built-in types: "int", "void"
inline constexpr char Function = 'f';      // a name that is called or declared with parameters
inline constexpr char String = 's';        // string and character literals
inline constexpr char Number = 'n';        // numeric literals
inline constexpr char Symbol = 'y';        // operators and punctuation
inline constexpr char Bracket = 'b';       // "{" and "}"
inline constexpr char Preprocessor = 'p';  // "#define"
inline constexpr char Comment = 'c';

}  // namespace kv::colour
