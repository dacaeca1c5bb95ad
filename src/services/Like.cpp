#include "services/Like.h"

#include <string>
#include <utility>
#include <vector>

#include "kavrel/Failure.h"
#include "kavrel/Text.h"

namespace kv {
namespace {

constexpr long kInvalidPatternString = 93;

struct Token {
  enum Kind { Literal, Any, One, Digit, Set };
  explicit Token(Kind k, char32_t c = 0) : kind(k), ch(c) {}

  Kind kind;
  char32_t ch;
  bool negate = false;
  std::vector<std::pair<char32_t, char32_t>> ranges;

  bool matches(char32_t c) const {
    switch (kind) {
      case Literal: return c == ch;
      case One: return true;
      case Digit: return c >= U'0' && c <= U'9';
      case Set: {
        bool inList = false;
        for (const auto& [low, high] : ranges) inList = inList || (c >= low && c <= high);
        return inList != negate;
      }
      case Any: break;
    }
    return false;
  }
};

[[noreturn]] void invalidPattern() {
  throw Failure(kInvalidPatternString, "Invalid pattern string");
}

std::vector<Token> parse(const std::u32string& p) {
  std::vector<Token> tokens;
  for (size_t i = 0; i < p.size(); ++i) {
    const char32_t c = p[i];
    if (c == U'*') {
      if (tokens.empty() || tokens.back().kind != Token::Any) tokens.emplace_back(Token::Any);
    } else if (c == U'?') {
      tokens.emplace_back(Token::One);
    } else if (c == U'#') {
      tokens.emplace_back(Token::Digit);
    } else if (c == U'[') {
      const size_t close = p.find(U']', i + 1);
      if (close == std::u32string::npos) invalidPattern();
      std::u32string_view list(p.data() + i + 1, close - i - 1);
      i = close;
      if (list.empty()) continue;  // "[]" matches the empty string
      Token set(Token::Set);
      // A lone "!" is the character itself: "[!]" matches "!".
      if (list.size() > 1 && list.front() == U'!') {
        set.negate = true;
        list.remove_prefix(1);
      }
      for (size_t k = 0; k < list.size(); ++k) {
        if (k + 2 < list.size() && list[k + 1] == U'-') {
          if (list[k + 2] < list[k]) invalidPattern();
          set.ranges.emplace_back(list[k], list[k + 2]);
          k += 2;
        } else {
          set.ranges.emplace_back(list[k], list[k]);
        }
      }
      tokens.push_back(std::move(set));
    } else {
      tokens.emplace_back(Token::Literal, c);
    }
  }
  return tokens;
}

}  // namespace

bool Like(std::string_view text, std::string_view pattern, bool ignoreCase) {
  const std::u32string t = ignoreCase ? text::toUtf32(text::toLower(text)) : text::toUtf32(text);
  const std::vector<Token> tokens = parse(ignoreCase ? text::toUtf32(text::toLower(pattern)) : text::toUtf32(pattern));

  // Greedy walk that returns to the last "*" on a mismatch; every other token takes one character.
  size_t ti = 0, pi = 0;
  size_t starToken = std::string::npos, starText = 0;
  while (ti < t.size()) {
    if (pi < tokens.size() && tokens[pi].kind == Token::Any) {
      starToken = ++pi;
      starText = ti;
    } else if (pi < tokens.size() && tokens[pi].matches(t[ti])) {
      ++pi;
      ++ti;
    } else if (starToken != std::string::npos) {
      pi = starToken;
      ti = ++starText;
    } else {
      return false;
    }
  }
  while (pi < tokens.size() && tokens[pi].kind == Token::Any) ++pi;
  return pi == tokens.size();
}

}  // namespace kv
