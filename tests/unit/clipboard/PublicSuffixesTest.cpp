#include "clipboard/detection/PublicSuffixes.h"

#include <gmock/gmock.h>

#include <QString>

namespace {
bool isHost(const char16_t* name)
{
    return PublicSuffixes::shared()->holdHost(name);
}

void expectHosts(std::initializer_list<const char16_t*> names, bool expected)
{
    for (const char16_t* name : names)
        EXPECT_EQ(isHost(name), expected) << QString::fromUtf16(name).toStdString();
}

TEST(PublicSuffixes, NamesBelowASuffixAreHosts)
{
    expectHosts({u"example.com", u"www.example.com", u"example.co.uk", u"a.b.c.example.org", u"x.museum",
                 u"1.example.com", u"my_host.example.com"},
                true);
}

TEST(PublicSuffixes, CaseDoesNotMatter)
{
    expectHosts({u"EXAMPLE.COM", u"Example.Co.Uk", u"XN--BCHER-KVA.DE"}, true);
}

TEST(PublicSuffixes, ASuffixAloneIsNoHost)
{
    expectHosts({u"com", u"co.uk", u"uk", u"foo.ck"}, false);
}

TEST(PublicSuffixes, RulesForTheSecondLevelOnlyCount)
{
    expectHosts({u"a.foo.ck", u"www.ck"}, true);
}

TEST(PublicSuffixes, NamesThatACompanyLendsOutAreHosts)
{
    expectHosts({u"github.io", u"user.github.io"}, true);
}

TEST(PublicSuffixes, UnknownEndingsAreNoHosts)
{
    expectHosts(
        {u"file.txt", u"main.cpp", u"e.g", u"1.5", u"a.b", u"192.168.0.1", u"foo.localhost", u"example.c0m"},
        false);
}

TEST(PublicSuffixes, OtherScriptsAreHostsInBothSpellings)
{
    expectHosts({u"bücher.de", u"xn--bcher-kva.de", u"пример.рф", u"xn--e1afmkfd.xn--p1ai", u"ПРИМЕР.РФ",
                 u"例子.中国"},
                true);
    expectHosts({u"bücher.txt", u"пример.нет"}, false);
}

TEST(PublicSuffixes, MalformedNamesAreNoHosts)
{
    expectHosts({u"", u".", u".com", u"..com", u"a..com", u"-a.com", u"a-.com", u"a.-b.com", u"example.com."},
                false);
}

TEST(PublicSuffixes, NamesAndLabelsHaveALongestLength)
{
    const QString label(63, u'a');
    const QString longest =
        label + u'.' + label + u'.' + label + u'.' + QString(57, u'a') + QStringLiteral(".com");
    ASSERT_EQ(longest.size(), 253);
    EXPECT_TRUE(PublicSuffixes::shared()->holdHost(longest));
    EXPECT_FALSE(PublicSuffixes::shared()->holdHost(u'a' + longest));
    EXPECT_FALSE(PublicSuffixes::shared()->holdHost(QString(64, u'a') + QStringLiteral(".com")));
}

TEST(PublicSuffixes, WellFormedNamesNeedNoSuffix)
{
    EXPECT_TRUE(PublicSuffixes::isWellFormed(u"localhost"));
    EXPECT_TRUE(PublicSuffixes::isWellFormed(u"192.168.0.1"));
    EXPECT_TRUE(PublicSuffixes::isWellFormed(u"bücher"));
    EXPECT_FALSE(PublicSuffixes::isWellFormed(u""));
    EXPECT_FALSE(PublicSuffixes::isWellFormed(u"a..b"));
}
} // namespace
