#include "base/Conversions.h"

#include "base/NumberFormat.h"
#include "base/Text.h"
#include "base/Utf.h"
#include "support/Testing.h"

namespace dravik {

namespace {

using test::refusal;

TEST(Conversions, IntegersRoundHalvesToEvenAndOverflow) {
    for (const auto& [number, integer] :
         {std::pair(0.5, 0), {1.5, 2}, {127.5, 128}, {-2.5, -2}, {32767.4, 32767}})
        EXPECT_EQ(toInt16(number), integer) << number;
    EXPECT_EQ(refusal([] { toInt16(32767.5); }), 6);
    EXPECT_EQ(refusal([] { toInt16(-32769); }), 6);
    EXPECT_EQ(refusal([] { toInt32(std::nan("")); }), 6);
    EXPECT_EQ(toInt32(2147483647.0), 2147483647);
    EXPECT_EQ(refusal([] { toInt32(2147483648.0); }), 6);
}

TEST(Conversions, LeadingNumberReadsWhatItCan) {
    for (const auto& [text, number] : {std::pair("1 minute", 1),
                                       {"  10 sec", 10},
                                       {"-1.#IND", -1},
                                       {"2.5e2x", 250},
                                       {"3e", 3},
                                       {"sec", 0},
                                       {"", 0}})
        EXPECT_EQ(leadingNumber(text), number) << text;
    EXPECT_TRUE(isNumeric(" 3.5 "));
    for (const char* text : {"3.5x", "", "-"}) EXPECT_FALSE(isNumeric(text)) << text;
}

TEST(Conversions, NumbersWithoutAValueHaveTheirClassicTexts) {
    EXPECT_EQ(numberText(std::numeric_limits<double>::infinity()), "1.#INF");
    EXPECT_EQ(numberText(-std::numeric_limits<double>::infinity()), "-1.#INF");
    EXPECT_NE(numberText(std::nan("")).find('#'), std::string::npos);
    EXPECT_EQ(numberText(0.1), "0.1");
    EXPECT_EQ(numberText(-0.0), "0");
}

TEST(NumberFormat, RoundsHalfAwayFromZeroOnTheDecimalDigits) {
    const std::tuple<double, const char*, const char*> numbers[] = {
        {0.5, "0.00#######", "0.50"},
        {0.125, "0.00#######", "0.125"},
        {0.1234567891, "0.00#######", "0.123456789"},
        {1234.5, "0.000", "1234.500"},
        {5, "##0.0", "5.0"},
        {0, "####0.000", "0.000"},
        {0.0005, "0.000", "0.001"},
        {1.005, "0.00", "1.01"},  // its double is a little less
        {9.9996, "0.000", "10.000"},
        {0.99996, "0.000", "1.000"},
        {-0.0004, "0.000", "0.000"},
        {-2.5, "0", "-3"},
        {1e-20, "0.000", "0.000"},
        {1e20, "0.0", "100000000000000000000.0"}};
    for (const auto& [number, picture, text] : numbers)
        EXPECT_EQ(formatNumber(number, picture), text) << number;
}

// "0.000" is written by a shorter way than the same picture with a digit more that counts only when it is
// there.
TEST(NumberFormat, TheShortWayAgreesWithTheLongOne) {
    std::vector<double> values = {9999.9994, 9999.9996, 1e7, 123456789.0005, 1e15, 4e-320, -0.0004, -0.0006};
    for (int k = 0; k < 3000; ++k) {
        const double middle = (k + 0.5) / 1000;
        for (const double value : {middle, std::nextafter(middle, 0), std::nextafter(middle, 10), k / 7.0,
                                   -k / 999.0, static_cast<double>(static_cast<float>(middle))})
            values.push_back(value);
    }
    for (const double value : values)
        EXPECT_EQ(formatNumber(value, "0.000"), formatNumber(value, "#0.000")) << value;
}

TEST(Text, CountsCharactersNotBytes) {
    EXPECT_EQ(characterCount("aé€"), 3u);
    EXPECT_EQ(characters("é1"), (std::vector<std::string>{"é", "1"}));
    EXPECT_EQ(characterCount("\xC3"), 1u);       // cut off in the middle of a character
    EXPECT_EQ(characterCount("\xE2\x82z"), 3u);  // not UTF-8: a byte a character
    EXPECT_EQ(withoutLast("aé€", 2), "a");
    EXPECT_EQ(withoutLast("ab", 5), "");
    for (const std::int32_t code : {0x41, 0xE9, 0x20AC, 0x1F600, 0x2F800, 0x10FFFF})
        EXPECT_EQ(codeOf(characterOf(code)), code);
    EXPECT_EQ(characterOf(-1), characterOf(0xFFFD));
    EXPECT_EQ(characterOf(0xD800), characterOf(0xFFFD));
}

TEST(Text, CaseAndBlanks) {
    EXPECT_EQ(upperCase("aZ1é÷ÿšłžαςώжёїґßı"), "AZ1É÷ŸŠŁŽΑΣΏЖЁЇҐßı");
    EXPECT_EQ(lowerCase("AzÉ×ŸŠŁŽΑΣΏЖЁЇҐẞİ"), "azé×ÿšłžασώжёїґẞİ");
    EXPECT_EQ(trimmed("  a b "), "a b");
    EXPECT_EQ(trimmed("   "), "");
    EXPECT_EQ(trimmed("\ta"), "\ta");
    EXPECT_FALSE(contains("", ""));
    EXPECT_TRUE(contains("ab", ""));
    EXPECT_FALSE(contains("ab", "A"));
}

TEST(Utf, TextsBecomeWideOnesWhateverTheirBytes) {
    EXPECT_EQ(wide("a\u00e4\u20ac\U0001F600z"), L"a\u00e4\u20ac\U0001F600z");
    EXPECT_EQ(wide("a\xC3"), L"a\uFFFD") << "cut off";
    EXPECT_EQ(wide("\xC0\xAF/"), L"\uFFFD\uFFFD/") << "a separator in disguise";
    EXPECT_EQ(wide("\xED\xA0\x80"), L"\uFFFD") << "half a pair";
    EXPECT_EQ(wide("\xF4\x90\x80\x80"), L"\uFFFD") << "beyond the last character";
}

TEST(Utf, WideTextsComeBack) {
    for (const std::string text :
         {"a\u00e4\u20ac\U0001F600z", "\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff", ""})
        EXPECT_EQ(utf8(wide(text)), text);
    const wchar_t high = 0xD83D, low = 0xDE00;
    for (const std::wstring& lone : {std::wstring{high}, std::wstring{low}})
        EXPECT_EQ(utf8(L"a" + lone + L"z"), "a\uFFFDz") << "half a pair is no character";
    EXPECT_EQ(utf8(std::wstring{high, high}), "\uFFFD\uFFFD");
    EXPECT_EQ(characters("\xE0\x80\xAF").size(), 3u)
        << "a separator in disguise is three bytes that are none";
    EXPECT_EQ(codeOf("\xED\xA0\x80"), 0xED) << "half a pair is no character, but its bytes are";
}

}  // namespace
}  // namespace dravik
