#include "clipboard/detection/ColorParser.h"

#include <gmock/gmock.h>

namespace {
/// The canonical text, or "none".
QString hexOf(QStringView text)
{
    const auto parsed = ColorParser::parse(text);
    return parsed ? parsed->hex : QStringLiteral("none");
}

QString withAlpha(const QString& alpha)
{
    return hexOf(QStringLiteral("rgba(0,0,0,%1)").arg(alpha));
}

const QString none = QStringLiteral("none");

TEST(ColorParserHex, SixDigitsAreTakenAsTheyStandInUpperCase)
{
    EXPECT_EQ(hexOf(u"#a1B2c3"), u"#A1B2C3");
}

TEST(ColorParserHex, EightDigitsCarryAlphaLast)
{
    EXPECT_EQ(hexOf(u"#AABBCCDD"), u"#AABBCCDD");
    EXPECT_EQ(ColorParser::parse(u"#00000080")->color, (SrgbColor{0, 0, 0, 128 / 255.0}));
}

TEST(ColorParserHex, ThreeDigitsAreDoubled)
{
    EXPECT_EQ(hexOf(u"#a1F"), u"#AA11FF");
}

TEST(ColorParserHex, OtherLengthsAreNoColour)
{
    for (const char16_t* text : {u"#", u"#A", u"#AB", u"#ABCD", u"#ABCDE", u"#ABCDEF0", u"#ABCDEF012"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserHex, WhitespaceAndNewlinesAroundAreTrimmed)
{
    EXPECT_EQ(hexOf(u"  #abc\n"), u"#AABBCC");
    EXPECT_EQ(hexOf(u"\u00a0\u2028\u3000\t\v\f\r\n\u0085#abc\u2003"), u"#AABBCC");
}

TEST(ColorParserHex, OtherCharactersAreNoColour)
{
    for (const char16_t* text : {u"#GGGGGG", u"#12345g", u"##abc", u"# abc", u"#ab c", u"#-12", u"#0x1",
                                 u"#１２３", u"#abc;", u"#abc\u0301", u"#\u0301abc", u"#\U0001d7d8bc"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
    EXPECT_EQ(hexOf(QStringView(u"#ab\0", 4)), none);
}

TEST(ColorParserHex, ChannelsAreFractionsOf255)
{
    EXPECT_EQ(ColorParser::parse(u"#FF8000")->color, (SrgbColor{1.0, 128 / 255.0, 0.0, 1.0}));
}

TEST(ColorParser, ThereIsNoFormForNamesHslOrHexWithoutHash)
{
    for (const char16_t* text : {u"red", u"abc", u"AABBCC", u"hsl(0, 100%, 50%)", u"0xAABBCC", u"", u"  ",
                                 u"rg", u"＃abc", u"transparent"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserRgb, CanonicalTextOfTheForms)
{
    EXPECT_EQ(hexOf(u"rgb(255, 0, 128)"), u"#FF0080");
    EXPECT_EQ(hexOf(u"RGBA(255,0,128,0.5)"), u"#FF008080");
    EXPECT_EQ(hexOf(u"RgB(1,2,3)"), u"#010203");
}

TEST(ColorParserRgb, TheOuterTrimRunsFirst)
{
    EXPECT_EQ(hexOf(u"rgb(1, 2, 3) "), u"#010203");
    EXPECT_EQ(hexOf(u"\r\n rgb(1,2,3)\u2029"), u"#010203");
}

TEST(ColorParserRgb, TheNumberOfPiecesMustFitTheForm)
{
    for (const char16_t* text : {u"rgb(1,2)", u"rgb(1,2,3,4)", u"rgba(1,2,3)", u"rgba(1,2,3,0.5,1)", u"rgb()",
                                 u"rgba()", u"rgb(1,2,3,)", u"rgb(,1,2,3)", u"rgba(1,2,3,)", u"rgb(1 2 3)"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserRgb, TheBracketsMustStandAsInTheForm)
{
    for (const char16_t* text : {u"rgb", u"rgb(", u"rgb)", u"rgb(1,2,3", u"rgb (1,2,3)", u"rgb1,2,3)",
                                 u"rgba(1,2,3,1", u"rgb[1,2,3]", u"rgb(1,2,3);", u"xrgb(1,2,3)",
                                 u"rgba (1,2,3,1)", u"rgbx(1,2,3)", u"rgb((1,2,3))", u"rgb(1,2,3)\u0301"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserRgb, OnlySpacesAndTabsAreTrimmedAroundAPiece)
{
    EXPECT_EQ(hexOf(u"rgb(\t1 , \t 2\t,3 )"), u"#010203");
    EXPECT_EQ(hexOf(u"rgba( 1 , 2 , 3 ,\t1 )"), u"#010203FF");
    for (const char16_t* text : {u"rgb(1,\n2,3)", u"rgb(1,2\n,3)", u"rgb(1,2,\r\n3)", u"rgb(1,\u00a02,3)",
                                 u"rgba(1,2,3,\n1)", u"rgba(1,2,3,1\n)", u"rgba(1,2,3,\v1)", u"rgb(1,2 2,3)"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserChannel, TakesASign)
{
    EXPECT_EQ(hexOf(u"rgb(+12,-0,+0)"), u"#0C0000");
}

TEST(ColorParserChannel, MustBeFrom0To255)
{
    EXPECT_EQ(hexOf(u"rgb(0,255,1)"), u"#00FF01");
    for (const char16_t* text : {u"rgb(-1,0,0)", u"rgb(0,256,0)", u"rgb(0,0,1000)", u"rgb(-256,0,0)"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserChannel, IsAWholeDecimalNumberAndNothingElse)
{
    for (const char16_t* text :
         {u"rgb(12.0,0,0)", u"rgb(100%,0,0)", u"rgb(,0,0)", u"rgb(+,0,0)", u"rgb(-,0,0)", u"rgb(+-1,0,0)",
          u"rgb(--0,0,0)", u"rgb(0x1,0,0)", u"rgb(1e1,0,0)", u"rgb(a,0,0)", u"rgb(+ 1,0,0)", u"rgb(１,0,0)",
          u"rgb(٣,0,0)", u"rgb(1_0,0,0)"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserChannel, MoreThan64BitsAreNoNumber)
{
    // 2^64 + 1 and 2^63 would wrap to small values; the last one is 2^32 + 1.
    for (const char16_t* text :
         {u"rgb(18446744073709551617,0,0)", u"rgb(9223372036854775808,0,0)", u"rgb(-9223372036854775809,0,0)",
          u"rgb(-18446744073709551616,0,0)", u"rgb(4294967297,0,0)"})
        EXPECT_EQ(hexOf(text), none) << QString::fromUtf16(text).toStdString();
}

TEST(ColorParserChannel, LeadingZerosNeverOverflow)
{
    const QString zeros(100, u'0');
    EXPECT_EQ(hexOf(QStringLiteral("rgb(%1,-%2,+%3)").arg(zeros + u'9', zeros, zeros + u'7')), u"#090007");
}

TEST(ColorParserAlpha, MustLieFrom0To1)
{
    EXPECT_EQ(withAlpha(QStringLiteral("1")), u"#000000FF");
    EXPECT_EQ(withAlpha(QStringLiteral("0")), u"#00000000");
    for (const char16_t* alpha :
         {u"1.5", u"-0.1", u"1.0000001", u"255", u"-1", u"1e400", u"-1e400", u"-1e-300"})
        EXPECT_EQ(withAlpha(QString::fromUtf16(alpha)), none) << QString::fromUtf16(alpha).toStdString();
}

TEST(ColorParserAlpha, HalvesAreRoundedAwayFromZero)
{
    EXPECT_EQ(withAlpha(QStringLiteral("0.5")), u"#00000080");   // 127.5
    EXPECT_EQ(withAlpha(QStringLiteral("0.1")), u"#0000001A");   // 25.5
    EXPECT_EQ(withAlpha(QStringLiteral("0.499")), u"#0000007F"); // 127.245
    EXPECT_EQ(withAlpha(QStringLiteral("0.0019")), u"#00000000");
    EXPECT_EQ(withAlpha(QStringLiteral("0.002")), u"#00000001");
    EXPECT_EQ(withAlpha(QStringLiteral("0.999")), u"#000000FF");
}

TEST(ColorParserAlpha, TakesEveryFormOfAFloatingPointNumber)
{
    for (const char16_t* half : {u".5", u"+.5", u"+0.5", u"0.50000", u"5e-1", u"5E-1", u"50e-2", u"0x1p-1",
                                 u"0X1P-1", u"0x.8", u"0x0.8p0", u"000.5", u"0.05e+1"})
        EXPECT_EQ(withAlpha(QString::fromUtf16(half)), u"#00000080")
            << QString::fromUtf16(half).toStdString();
    for (const char16_t* one : {u"1.", u"1.0", u"0x1", u"10e-1", u"+1"})
        EXPECT_EQ(withAlpha(QString::fromUtf16(one)), u"#000000FF") << QString::fromUtf16(one).toStdString();
    for (const char16_t* zero : {u"-0", u"-0.0", u"0.", u"0e5", u"1e-400", u"-1e-400", u"0x0"})
        EXPECT_EQ(withAlpha(QString::fromUtf16(zero)), u"#00000000")
            << QString::fromUtf16(zero).toStdString();
}

TEST(ColorParserAlpha, WordsAreNumbersOutOfRange)
{
    for (const char16_t* alpha :
         {u"inf", u"-inf", u"infinity", u"INF", u"nan", u"-nan", u"NAN", u"nan(1)", u"nan()"})
        EXPECT_EQ(withAlpha(QString::fromUtf16(alpha)), none) << QString::fromUtf16(alpha).toStdString();
}

TEST(ColorParserAlpha, TheWholePieceMustBeConsumed)
{
    for (const char16_t* alpha :
         {u"0.5x", u"50%", u"0.5 0", u"0x", u"0.5f", u"1e", u"0x1p", u"0.5.", u".", u"+", u"-", u"e5", u"",
          u" ", u"0.5\u00a0", u"٠", u"0,5", u"\n0.5", u"\r\n0.5"})
        EXPECT_EQ(withAlpha(QString::fromUtf16(alpha)), none) << QString::fromUtf16(alpha).toStdString();
    EXPECT_EQ(withAlpha(QStringLiteral("0.5") + QChar(0)), none);
    EXPECT_EQ(withAlpha(QChar(0) + QStringLiteral("0.5")), none);
}

TEST(ColorParserAlpha, TheColourHoldsTheAlphaOfTheByte)
{
    EXPECT_EQ(ColorParser::parse(u"rgba(255,0,128,0.5)")->color,
              (SrgbColor{1.0, 0.0, 128 / 255.0, 128 / 255.0}));
    EXPECT_EQ(ColorParser::parse(u"rgb(255,0,128)")->color.alpha, 1.0);
}

TEST(ColorParser, TheCanonicalTextParsesToItself)
{
    for (const char16_t* text : {u"#abc", u"rgb(9,8,7)", u"rgba(9,8,7,0.25)"}) {
        const auto parsed = ColorParser::parse(text);
        ASSERT_TRUE(parsed);
        EXPECT_EQ(ColorParser::parse(parsed->hex), parsed);
    }
}

TEST(ColorParser, LongTextsAreNoColour)
{
    EXPECT_EQ(hexOf(u'#' + QString(1'000'000, u'a')), none);
    EXPECT_EQ(hexOf(QStringLiteral("rgb(%1)").arg(QString(1'000'000, u','))), none);
    EXPECT_EQ(hexOf(QStringLiteral("rgb(%1,0,0)").arg(QString(1'000'000, u'9'))), none);
    EXPECT_EQ(withAlpha(QStringLiteral("1.%1").arg(QString(1'000'000, u'0'))), u"#000000FF");
}
} // namespace
