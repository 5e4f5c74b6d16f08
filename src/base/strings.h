#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

// The classic text functions on UTF-8 text. Positions and lengths count characters
// (code points), positions start at 1, and no result is ever cut inside a character.
// A negative length or a start below 1 is VbError 5.

long Len(std::string_view s);

// Position of needle in haystack from character `start` on, 0 when absent. An empty
// needle is found at start (0 when start lies beyond the end + 1); an empty haystack
// holds nothing.
long InStr(long start, std::string_view haystack, std::string_view needle);
long InStr(std::string_view haystack, std::string_view needle);
// The same, ignoring the case of A-Z.
long InStrText(long start, std::string_view haystack, std::string_view needle);
long InStrText(std::string_view haystack, std::string_view needle);
// The last position of needle lying wholly within the first `start` characters (-1: all).
long InStrRev(std::string_view haystack, std::string_view needle, long start = -1);

std::string Mid(std::string_view s, long start);
std::string Mid(std::string_view s, long start, long length);
std::string Left(std::string_view s, long n);
// Left without a copy: the first n characters as a view of the text.
std::string_view LeftView(std::string_view s, long n);
std::string Right(std::string_view s, long n);

std::string UCase(std::string_view s);  // A-Z only
std::string LCase(std::string_view s);  // A-Z only
std::string Trim(std::string_view s);   // blanks only
std::string LTrim(std::string_view s);
std::string RTrim(std::string_view s);

// The parts joined, in one allocation.
std::string Concat(std::initializer_list<std::string_view> parts);

// Every occurrence of find, left to right without overlap; an empty find changes nothing.
std::string Replace(std::string_view s, std::string_view find, std::string_view with);

std::string Space(long n);
// n copies of the first character of ch (the classic String function); an empty ch is
// VbError 5.
std::string StringOf(long n, std::string_view ch);
std::string StringOf(long n, char ch);

// The Like operator with text comparison: "*" any run, "?" one character, "#" one digit,
// "[abc]", "[a-z]", "[!abc]" one character of (or not of) a set; "[*]" is a literal star.
// Case is ignored for A-Z. An unclosed "[" is VbError 93. Time is linear in the text for
// each star, never exponential.
class LikePattern {
  public:
    explicit LikePattern(std::string_view pattern);
    bool matches(std::string_view text) const;

  private:
    struct Token {
        enum Kind { Literal, AnyOne, Digit, Star, Set };
        Kind kind = Literal;
        char32_t ch = 0;
        bool negate = false;
        std::vector<std::pair<char32_t, char32_t>> ranges;
    };
    bool tokenMatches(const Token& t, char32_t c) const;
    std::vector<Token> tokens_;
};

bool likeMatch(std::string_view text, std::string_view pattern);

// An indexed name as the settings and the documents write it: numbered("LabelName", 3) is
// "LabelName(3)".
std::string numbered(const std::string& key, int n);
