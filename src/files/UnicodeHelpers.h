// Small text services shared by the whole object model: colon and field cuts, in-place appends,
// null-safe value text, URL escapes, and the tables that tie a Windows locale ID (LCID) to a
// locale name, its ANSI code page and the character-set name that HTML pages declare.
#pragma once

#include <concepts>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>

#include "kavrel/Failure.h"
#include "kavrel/Object.h"
#include "kavrel/Variant.h"

namespace kv {

// A code page by its Windows number (65001 is UTF-8, 1200 UTF-16LE).
struct CodePage {
  long ID = 0;
  std::string Charset;        // what an HTML page declares: "windows-1252", "shift_jis", "utf-8"
  std::string ConverterName;  // the name iconv knows: "CP1252", "UTF-8"
  bool Valid = false;
};

// A locale by its Windows locale ID.
struct Locale {
  long ID = 0;           // 1033
  std::string Name;      // "en-US"
  std::string Language;  // "English (United States)"
  CodePage ANSICodePage;
  bool Valid = false;
};

class UnicodeHelpers {
 public:
  // True when `collection` holds `key`, without a failure. Works for anything keyed: a type with
  // `Exists(key)`, a standard map or set, a type whose `Item(key)` fails for a missing key, a
  // late-bound object with an `Item` member, and (smart) pointers to any of these.
  template <class Collection>
  static bool CollectionHasKey(const Collection& collection, std::string_view key);

  // The text before and after the first colon. Without a colon the whole text is the part
  // before and the part after is empty: "Target" reads as a target without a protocol.
  static std::string PartBeforeColon(std::string_view text);
  static std::string PartAfterColon(std::string_view text);

  // Field `index` (1-based) of `text` split at `delimiter`; "" when there is no such field.
  // An empty delimiter leaves the text whole: field 1 is the text.
  static std::string NthField(std::string_view text, std::string_view delimiter, long index);

  // Appends with geometric growth, so that a long run of appends to one string stays linear.
  static void AppendInPlace(std::string& text, std::string_view addition);

  // Text of a value; Empty, Null and Nothing read as "".
  static std::string VariantToString(const Variant& value);

  // Percent-decoding: "%XX" becomes the byte XX; "+" stays "+" (a path, not a form). Invalid
  // escapes stay as they stand. Decoded bytes that are not UTF-8 are read as Windows-1252.
  static std::string URLDecode(std::string_view text);
  // Percent-encoding of the UTF-8 bytes. Kept as they stand: the unreserved characters
  // A-Z a-z 0-9 - . _ ~, the separators "/" and ":", and the characters of `alsoPlain`.
  static std::string URLEncode(std::string_view text, std::string_view alsoPlain = {});

  // Locale and code page tables. An unknown ID gives a record with Valid false.
  static Locale LocaleFromID(long lcid);
  static Locale LocaleFromName(std::string_view name);  // "en-US", case ignored
  static CodePage CodePageFromID(long codePage);
  // The locale of the process's environment (LC_ALL, LC_MESSAGES, LANG, such as "de_DE.UTF-8");
  // United States English when it names none that the table knows.
  static Locale SystemLocale();
  // The character-set number that help and font tools use for a code page (0 for Western
  // European, 128 for Japanese, ...); 1, the default set, for a code page without one.
  static long CharSetID(long codePage);

 private:
  template <class T>
  struct IsPointerLike : std::false_type {};
  template <class T>
  struct IsPointerLike<T*> : std::true_type {};
  template <class T>
  struct IsPointerLike<std::shared_ptr<T>> : std::true_type {};
  template <class T>
  struct IsPointerLike<std::unique_ptr<T>> : std::true_type {};
};

template <class Collection>
bool UnicodeHelpers::CollectionHasKey(const Collection& collection, std::string_view key) {
  if constexpr (IsPointerLike<Collection>::value) {
    return collection && CollectionHasKey(*collection, key);
  } else if constexpr (std::is_base_of_v<Object, Collection>) {
    try {
      // Late-bound members are not const; asking for an item changes nothing.
      const_cast<Collection&>(collection).call("Item", {Variant(key)});
      return true;
    } catch (const Failure&) {
      return false;
    }
  } else if constexpr (requires {
                         { collection.Exists(key) } -> std::convertible_to<bool>;
                       }) {
    return collection.Exists(key);
  } else if constexpr (requires { collection.find(typename Collection::key_type(key)) != collection.end(); }) {
    return collection.find(typename Collection::key_type(key)) != collection.end();
  } else {
    static_assert(
        requires { collection.Item(key); }, "the collection needs Exists(key), find(key) or Item(key)");
    try {
      (void)collection.Item(key);
      return true;
    } catch (const Failure&) {
      return false;
    }
  }
}

}  // namespace kv
