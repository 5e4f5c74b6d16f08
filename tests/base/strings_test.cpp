#include "base/strings.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

#include "base/vb_error.h"

namespace {
// "é" and "€" take two and three bytes.
const std::string kCafe =
    "caf\xC3\xA9 \xE2\x82\xAC"
    "5";  // "café €5"
}  // namespace

TEST(TextLength, CountsCharactersNotBytes) {
    EXPECT_EQ(Len("abc"), 3);
    EXPECT_EQ(Len(""), 0);
    EXPECT_EQ(Len(kCafe), 7);
}

TEST(TextSearch, FindsOneBasedPosition) {
    EXPECT_EQ(InStr("hello world", "o"), 5);
    EXPECT_EQ(InStr("hello world", "world"), 7);
    EXPECT_EQ(InStr("hello", "z"), 0);
}

TEST(TextSearch, StartsAtTheGivenCharacter) {
    EXPECT_EQ(InStr(6, "hello world", "o"), 8);
    EXPECT_EQ(InStr(5, "hello", "o"), 5);
}

TEST(TextSearch, StartPastTheEndFindsNothing) {
    EXPECT_EQ(InStr(6, "hello", "o"), 0);
    EXPECT_EQ(InStr(60, "hello", ""), 0);
}

TEST(TextSearch, EmptyNeedleIsFoundAtStart) {
    EXPECT_EQ(InStr(3, "hello", ""), 3);
    EXPECT_EQ(InStr("hello", ""), 1);
}

TEST(TextSearch, EmptyHaystackHoldsNothing) {
    EXPECT_EQ(InStr("", "a"), 0);
}

TEST(TextSearch, StartBelowOneFails) {
    EXPECT_THROW(InStr(0, "abc", "a"), VbError);
}

TEST(TextSearch, PositionsCountCharacters) {
    EXPECT_EQ(InStr(kCafe, "5"), 7);
    EXPECT_EQ(InStr(kCafe, "\xE2\x82\xAC"), 6);
    EXPECT_EQ(InStr(5, kCafe, "5"), 7);
}

TEST(TextSearch, IsCaseSensitive) {
    EXPECT_EQ(InStr("Hello", "h"), 0);
}

TEST(TextSearchIgnoringCase, FindsAnyCase) {
    EXPECT_EQ(InStrText("Hello World", "WORLD"), 7);
    EXPECT_EQ(InStrText(2, "aXbx", "x"), 2);
    EXPECT_EQ(InStrText("abc", "d"), 0);
}

TEST(TextSearchIgnoringCase, CountsCharactersAndKeepsTheRulesOfInStr) {
    EXPECT_EQ(InStrText("\xC3\xA9t\xC3\xA9 PicRef", "picref"), 5);
    EXPECT_EQ(InStrText(3, "abcABC", "ABC"), 4);
    EXPECT_EQ(InStrText(9, "abc", "a"), 0);
    EXPECT_EQ(InStrText(2, "abc", ""), 2);
    EXPECT_EQ(InStrText("", ""), 0);
    EXPECT_EQ(InStrText("ab", "abc"), 0);
    EXPECT_THROW(InStrText(0, "abc", "a"), VbError);
}

// Long texts are counted several bytes at a time: a letter of two or three bytes, or a stray
// continuation byte, at any place of a long path counts as one character with what it
// continues, as a character at a time would count it.
TEST(TextCharacters, LongTextsCountLikeOneCharacterAtATime) {
    const std::string pieces[] = {"e", "\xc3\xa9", "\xe2\x82\xac", "\x80", "/"};
    for (int length = 1; length <= 40; ++length)
        for (int at = 0; at < length; ++at)
            for (const std::string& odd : pieces) {
                std::string text;
                std::vector<std::size_t> starts;  // the byte each character starts at
                for (int i = 0; i < length; ++i) {
                    const bool stray = i == at && odd == "\x80";
                    if (!(stray && i > 0)) starts.push_back(text.size());
                    text += i == at ? odd : "a";
                }
                const long chars = static_cast<long>(starts.size());
                ASSERT_EQ(Len(text), chars) << length << " " << at;
                for (long n = 0; n <= chars; ++n) {
                    const std::size_t bytes = n < chars ? starts[n] : text.size();
                    ASSERT_EQ(Left(text, n), text.substr(0, bytes)) << length << " " << at;
                    ASSERT_EQ(Mid(text, n + 1), text.substr(bytes)) << length << " " << at;
                }
                if (odd == "/") {
                    ASSERT_EQ(InStrRev(text, "/"), at + 1) << length;
                }
                ASSERT_EQ(Right(text, 1), text.substr(starts.back()));
            }
}

TEST(TextCharacters, StrayContinuationBytesBelongToTheCharacterBefore) {
    EXPECT_EQ(Len("ab\x80"
                  "c"),
              3);
    EXPECT_EQ(Left("ab\x80"
                   "c",
                   2),
              "ab\x80");
    EXPECT_EQ(Mid("ab\x80\x80"
                  "cd",
                  3),
              "cd");
    EXPECT_EQ(Left("\x80"
                   "ab",
                   1),
              "\x80");
    EXPECT_EQ(InStr("ab\x80"
                    "cd",
                    "d"),
              4);
}

TEST(TextSearchIgnoringCase, FindsAMatchThatEndsTheTextAndNoneThatWouldRunPastIt) {
    EXPECT_EQ(InStrText("<!-- PICREF", "PicRef"), 6);
    EXPECT_EQ(InStrText(2, "xAB", "ab"), 2);
    EXPECT_EQ(InStrText(3, "xAB", "ab"), 0);
    EXPECT_EQ(InStrText("pPpicref", "PICREF"), 3);
    EXPECT_EQ(InStrText("Pa pA PAx", "pax"), 7);
    EXPECT_EQ(InStrText("a<!- <!--", "<!--"), 6);
    EXPECT_EQ(InStrText("[\\]^_`", "{|}~"), 0);
}

TEST(TextJoin, JoinsThePartsInOrder) {
    EXPECT_EQ(Concat({"<p align='", std::string("left"), "'>", ""}), "<p align='left'>");
    EXPECT_EQ(Concat({}), "");
}

TEST(TextSearchFromEnd, FindsLastOccurrence) {
    EXPECT_EQ(InStrRev("c:\\pics\\a.jpg", "\\"), 8);
    EXPECT_EQ(InStrRev("abcabc", "abc"), 4);
    EXPECT_EQ(InStrRev("abc", "z"), 0);
}

TEST(TextSearchFromEnd, StartLimitsTheSearch) {
    EXPECT_EQ(InStrRev("abcabc", "abc", 5), 1);
    EXPECT_EQ(InStrRev("abcabc", "abc", 6), 4);
}

TEST(TextSearchFromEnd, CountsCharacters) {
    EXPECT_EQ(InStrRev(kCafe, "5"), 7);
}

TEST(TextPieces, MidFromStart) {
    EXPECT_EQ(Mid("hello", 2), "ello");
    EXPECT_EQ(Mid("hello", 9), "");
}

TEST(TextPieces, MidWithLength) {
    EXPECT_EQ(Mid("hello", 2, 3), "ell");
    EXPECT_EQ(Mid("hello", 4, 10), "lo");
    EXPECT_EQ(Mid("hello", 2, 0), "");
}

TEST(TextPieces, MidStartBelowOneFails) {
    try {
        Mid("hello", 0, 1);
        FAIL() << "no fault";
    } catch (const VbError& e) {
        EXPECT_EQ(e.Number(), 5);
    }
}

TEST(TextPieces, MidNeverCutsACharacter) {
    EXPECT_EQ(Mid(kCafe, 4, 1), "\xC3\xA9");
    EXPECT_EQ(Mid(kCafe, 6),
              "\xE2\x82\xAC"
              "5");
}

TEST(TextPieces, LeftAndRight) {
    EXPECT_EQ(Left("hello", 2), "he");
    EXPECT_EQ(Left("hello", 20), "hello");
    EXPECT_EQ(Right("hello", 3), "llo");
    EXPECT_EQ(Right("hello", 20), "hello");
    EXPECT_EQ(Right("hello", 0), "");
}

TEST(TextPieces, LeftViewIsLeftWithoutACopy) {
    const std::string text = "caf\xc3\xa9 au lait";
    EXPECT_EQ(LeftView(text, 4), "caf\xc3\xa9");
    EXPECT_EQ(LeftView(text, 4).data(), text.data());
    EXPECT_EQ(LeftView(text, 50), text);
    EXPECT_THROW(LeftView(text, -1), VbError);
}

TEST(TextPieces, LeftAndRightCountCharacters) {
    EXPECT_EQ(Left(kCafe, 4), "caf\xC3\xA9");
    EXPECT_EQ(Right(kCafe, 2),
              "\xE2\x82\xAC"
              "5");
}

TEST(TextPieces, NegativeLengthFails) {
    EXPECT_THROW(Left("abc", -1), VbError);
    EXPECT_THROW(Right("abc", -1), VbError);
    EXPECT_THROW(Mid("abc", 1, -1), VbError);
}

TEST(TextCase, UpperAndLowerTouchOnlyAscii) {
    EXPECT_EQ(UCase("abc Def 1"), "ABC DEF 1");
    EXPECT_EQ(LCase("ABC Def"), "abc def");
    EXPECT_EQ(UCase("caf\xC3\xA9"), "CAF\xC3\xA9");
}

TEST(TextTrim, BlanksOnly) {
    EXPECT_EQ(Trim("  a b  "), "a b");
    EXPECT_EQ(LTrim("  a "), "a ");
    EXPECT_EQ(RTrim("  a "), "  a");
    EXPECT_EQ(Trim("\ta\t"), "\ta\t");
    EXPECT_EQ(Trim("   "), "");
}

TEST(TextReplace, EveryOccurrence) {
    EXPECT_EQ(Replace("a,b,,c", ",", ";"), "a;b;;c");
    EXPECT_EQ(Replace("aaa", "aa", "b"), "ba");
    EXPECT_EQ(Replace("abc", "", "x"), "abc");
    EXPECT_EQ(Replace("c:\\a\\b", "\\", "/"), "c:/a/b");
}

TEST(TextRepeat, SpaceAndStringOf) {
    EXPECT_EQ(Space(3), "   ");
    EXPECT_EQ(StringOf(3, '-'), "---");
    EXPECT_EQ(StringOf(2, "xyz"), "xx");
    EXPECT_EQ(StringOf(2, "\xE2\x82\xAC"), "\xE2\x82\xAC\xE2\x82\xAC");
    EXPECT_EQ(Space(0), "");
}

TEST(LikeOperator, StarMatchesAnyRun) {
    EXPECT_TRUE(likeMatch("blue widget", "*widget"));
    EXPECT_TRUE(likeMatch("widget", "*widget*"));
    EXPECT_TRUE(likeMatch("", "*"));
    EXPECT_FALSE(likeMatch("widgets", "*widget"));
}

TEST(LikeOperator, QuestionMarkIsOneCharacter) {
    EXPECT_TRUE(likeMatch("cat", "c?t"));
    EXPECT_FALSE(likeMatch("ct", "c?t"));
    EXPECT_TRUE(likeMatch("caf\xC3\xA9", "caf?"));
}

TEST(LikeOperator, HashIsOneDigit) {
    EXPECT_TRUE(likeMatch("A12", "A##"));
    EXPECT_FALSE(likeMatch("A1B", "A##"));
}

TEST(LikeOperator, CharacterSets) {
    EXPECT_TRUE(likeMatch("b", "[abc]"));
    EXPECT_FALSE(likeMatch("d", "[abc]"));
    EXPECT_TRUE(likeMatch("m", "[a-z]"));
    EXPECT_FALSE(likeMatch("5", "[a-z]"));
    EXPECT_TRUE(likeMatch("d", "[!abc]"));
    EXPECT_FALSE(likeMatch("a", "[!abc]"));
    EXPECT_TRUE(likeMatch("x-1", "x[-]1"));
}

TEST(LikeOperator, BracketsMakeWildcardsLiteral) {
    EXPECT_TRUE(likeMatch("a*b", "a[*]b"));
    EXPECT_FALSE(likeMatch("axb", "a[*]b"));
}

TEST(LikeOperator, IgnoresCase) {
    EXPECT_TRUE(likeMatch("Blue WIDGET", "*widget"));
    EXPECT_TRUE(likeMatch("Q", "[a-z]"));
    EXPECT_TRUE(likeMatch("abc", "ABC"));
}

TEST(LikeOperator, WholeTextMustMatch) {
    EXPECT_FALSE(likeMatch("abcd", "abc"));
    EXPECT_FALSE(likeMatch("abc", "abcd"));
    EXPECT_TRUE(likeMatch("abc", "abc"));
}

TEST(LikeOperator, UnclosedBracketIsInvalidPattern) {
    try {
        likeMatch("a", "[ab");
        FAIL() << "no fault";
    } catch (const VbError& e) {
        EXPECT_EQ(e.Number(), 93);
    }
}

TEST(LikeOperator, ManyStarsStayFast) {
    const std::string text(20000, 'a');
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_FALSE(likeMatch(text, "*a*a*a*a*a*a*a*a*a*a*b"));
    const auto spent = std::chrono::steady_clock::now() - begin;
    EXPECT_LT(std::chrono::duration_cast<std::chrono::seconds>(spent).count(), 2);
}

TEST(LikeOperator, CompiledPatternIsReusable) {
    const LikePattern pattern("*shirt*");
    EXPECT_TRUE(pattern.matches("T-Shirt, red"));
    EXPECT_FALSE(pattern.matches("sweater"));
}
