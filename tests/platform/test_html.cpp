#include "platform/services/HtmlImporter.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace {

QString plain(const QString &html) {
    static const auto importer = platform::makeHtmlImporter();
    return importer->plainText(html);
}

struct Case {
    const char *name;
    QString html;
    QString text;
};

void PrintTo(const Case &example, std::ostream *out) {
    *out << example.name;
}

class PlainText : public testing::TestWithParam<Case> {};

TEST_P(PlainText, IsWhatARichTextImporterGives) {
    const QString text = plain(GetParam().html);
    EXPECT_EQ(text, GetParam().text) << qPrintable(text);
}

std::string caseName(const testing::TestParamInfo<Case> &info) {
    return info.param.name;
}

const Case blocks[] = {
    {"BareText", u"bare"_qs, u"bare"_qs},
    {"DocumentTagsGiveNothing",
     u"<html><head><title>t</title><style>p{}</style></head><body>x</body></html>"_qs, u"x"_qs},
    {"TextAfterTheEndOfTheDocument", u"<body>a</body></html>b<p>c"_qs, u"ab\nc\n"_qs},
    {"ABlockEndsWithOneBreak", u"<p>a</p><div>b</div>"_qs, u"a\nb\n"_qs},
    {"AnEmptyBlockGivesABreak", u"<p>a</p><p></p><div> </div>b"_qs, u"a\n\n\nb"_qs},
    {"NestedBlocksEndOnce", u"<div><div><p>a</p></div></div>b"_qs, u"a\nb"_qs},
    {"NestedEmptyBlocksGiveOneBreak", u"<div><div><p></p></div></div>"_qs, u"\n"_qs},
    {"TextAroundABlock", u"a<div>b</div>c"_qs, u"a\nb\nc"_qs},
    {"AParagraphIsEndedByABlock", u"<p>a<div>b</div>c"_qs, u"a\nb\nc"_qs},
    {"ARuleIsAnEmptyBlock", u"a<hr>b"_qs, u"a\n\nb"_qs},
    {"AStrayEndIsIgnored", u"</div>x</b>"_qs, u"x"_qs},
    {"AParagraphIsEndedByABlockAlsoFromInside", u"<p>a<b><br>b<div>c</div>"_qs, u"a\u2028b\nc\n"_qs},
    {"TheEndOfAFormatEndsNoParagraph", u"<span><p>a</span>b</p>"_qs, u"ab\n"_qs},
    {"TextEndsTheHead", u"<head><title>t</title> a<p>b"_qs, u"a\nb\n"_qs},
};
INSTANTIATE_TEST_SUITE_P(Blocks, PlainText, testing::ValuesIn(blocks), caseName);

const Case lines[] = {
    {"ABreakInAParagraphSeparates", u"<p>a<br>b</p>"_qs, u"a\u2028b\n"_qs},
    {"ABreakInAHeadingSeparates", u"<h2>a<br/>b</h2>"_qs, u"a\u2028b\n"_qs},
    {"ABreakElsewhereEndsTheLine", u"a<br>b<div>c<br>d</div>"_qs, u"a\nb\nc\nd\n"_qs},
    {"ATrailingBreakGivesWayToTheBlocksEnd", u"<p>a<br></p><div>b<br></div>"_qs, u"a\nb\n"_qs},
    {"OnlyTheLastBreakGivesWay", u"<p>a<br><br></p>"_qs, u"a\u2028\n"_qs},
    {"ABreakAloneIsAnEmptyLine", u"<p><br></p><div><br></div>"_qs, u"\n\n"_qs},
    {"BlanksCollapse", u"  a \n\t b  <b> c</b>"_qs, u"a b c"_qs},
    {"ATrailingBlankGivesWay", u"<p>a </p>b <div>c </div> "_qs, u"a\nb\nc\n"_qs},
    {"ABlankBeforeABreakIsNotSeen", u"a <br> b"_qs, u"a\nb"_qs},
    {"ANoBreakSpaceStays", u"<p>&nbsp;a&nbsp;</p>"_qs, u"\u00a0a\u00a0\n"_qs},
    {"PreformattedTextStays", u"<pre>\n x\r\n\n  y\r z\u0096</pre>w"_qs, u" x\n\n  y\n z\u2013\nw"_qs},
};
INSTANTIATE_TEST_SUITE_P(Lines, PlainText, testing::ValuesIn(lines), caseName);

const Case structures[] = {
    {"Bullets", u"<ul><li>a</li> <li>b<br>c</ul>d"_qs, u"\t•\ta\n\t•\tb\u2028c\nd"_qs},
    {"Numbers", u"<ol><li>a<li>b</ol><ol start=7><li>c<li value=3>d<li>e</ol>"_qs,
     u"\t1.\ta\n\t2.\tb\n\t7.\tc\n\t3.\td\n\t4.\te\n"_qs},
    {"ABlockInAnItemStandsOnItsLine", u"<ul><li><p>a</p><p>b</p></li></ul>"_qs, u"\t•\ta\nb\n"_qs},
    {"AListInAnItem", u"<ol><li>a<ul><li>b</li></ul></li><li>c</li></ol>"_qs,
     u"\t1.\ta\n\t•\tb\n\t2.\tc\n"_qs},
    {"AnEmptyItem", u"<ul><li></li></ul>"_qs, u"\t•\t\n"_qs},
    {"ATableInACellKeepsItsRows", u"<table><tr><td><table><tr><td>a<tr><td>b</table><td>c</table>d"_qs,
     u"a\nb\nc\nd"_qs},
    {"EachCellIsALine", u"x<table> <tr> <td>a</td> <td></td> </tr> <tr> <th> c </th> </tr> </table>y"_qs,
     u"x\na\n\nc\ny"_qs},
    {"AnImageIsACharacter", u"a<img src='cid:1' alt='p'>b"_qs, u"a\ufffcb"_qs},
};
INSTANTIATE_TEST_SUITE_P(Structures, PlainText, testing::ValuesIn(structures), caseName);

const Case unseen[] = {
    {"Scripts", u"a<script>if(x<y){'<p>'}</script>b<style>p{}</style>c"_qs, u"abc"_qs},
    {"NotDisplayed", u"a<div style='color:red; DISPLAY : none !important'>b<p>c<br></div>d"_qs, u"ad"_qs},
    {"OtherStylesAreSeen", u"<b style='display:nonesuch;x-display:none'>a</b>"_qs, u"a"_qs},
    {"CommentsAndConditions",
     u"a<!-- <p>x</p> --><!--[if mso]>y<![endif]--><![if !mso]>b<![endif]><?xml z?>c"_qs, u"abc"_qs},
    {"AnEncodingThatTheTextClaims", u"<meta charset=utf-16><meta charset=iso-8859-1>é"_qs, u"é"_qs},
};
INSTANTIATE_TEST_SUITE_P(Unseen, PlainText, testing::ValuesIn(unseen), caseName);

const Case characters[] = {
    {"LessThanIsText", u"<p>1 < 2 & 3<"_qs, u"1 < 2 & 3<\n"_qs},
    {"Entities", u"&lt;&amp;&eacute;&#8364;&#x1F600;"_qs, u"<&é€😀"_qs},
    {"ReferencesToNoCharacter", u"&#0;&#xd800;&#x110000;&#99999999999;&#;&#x;&nosuch;&amp"_qs,
     u"\ufffd\ufffd\ufffd\ufffd&#;&#x;&nosuch;&amp"_qs},
    {"WindowsCharacters", u"&#150;\u0093a\u0094&#128;"_qs, u"–“a”€"_qs},
    {"OtherTwoByteCharacters", u"\u00a9\u00ab\u00bf\u0081"_qs, u"\u00a9\u00ab\u00bf\u0081"_qs},
    {"ALoneSurrogateSpoilsNothing", u"é"_qs + QChar(0xd83d) + u"ü"_qs, u"é\ufffdü"_qs},
    {"ANulSpoilsNothing", u"a"_qs + QChar(0) + u"b"_qs, u"ab"_qs},
    {"UnknownTags", u"<p>a<o:p>&nbsp;</o:p></p><x-y>b"_qs, u"a\u00a0\nb"_qs},
};
INSTANTIATE_TEST_SUITE_P(Characters, PlainText, testing::ValuesIn(characters), caseName);

TEST(HtmlImporter, NothingGivesEmptyTextRatherThanNone) {
    EXPECT_FALSE(plain(QString()).isNull());
    EXPECT_TRUE(plain(QString()).isEmpty());
}

TEST(HtmlImporter, ACutAnywhereGivesABeginningOfTheSameWords) {
    const QString html =
        u"<div>one <b class=\"x y\">twö</b>&amp;<ul><li>three<!-- c --></ul><pre>\n😀</pre></div>"_qs;
    for (int length = 0; length <= html.size(); ++length) {
        const QString text = plain(html.left(length));
        EXPECT_LE(text.size(), length + 4) << length;
        EXPECT_EQ(text.contains(u"one"_qs), length >= 8) << length;
    }
}

TEST(HtmlImporter, AMultiByteCharacterAtTheEdgeOfAChunkStays) {
    for (int shift = 0; shift < 4; ++shift) {
        const QString text = QString(shift, u'a') + u"😀é€"_qs.repeated(100'000);
        EXPECT_TRUE(plain(text) == text) << shift;
    }
}

TEST(HtmlImporter, DeepNestingLosesNoText) {
    const QString html = u"<div>"_qs.repeated(20'000) + u"x"_qs + u"</div>"_qs.repeated(20'000) + u"y"_qs;
    EXPECT_EQ(plain(html), u"x\ny"_qs);
}

struct Repeated {
    const char *name;
    const char *html;
    const char *opening = "";
};

qint64 nanosecondsFor(const Repeated &part, int times) {
    const QString html =
        QString::fromUtf8(part.opening).repeated(times) + QString::fromUtf8(part.html).repeated(times);
    qint64 best = std::numeric_limits<qint64>::max();
    for (int i = 0; i < 3; ++i) {
        QElapsedTimer timer;
        timer.start();
        (void)plain(html);
        best = std::min(best, timer.nsecsElapsed());
    }
    return best;
}

TEST(HtmlImporter, TimeGrowsWithTheTextAndNotFaster) {
    const Repeated parts[] = {
        {"mail", "<p class=\"m\"><span style='color:black'>Some words &amp; more</span><o:p></o:p></p>\n"},
        {"nested", "<div><span>x"},
        {"stray ends", "</b>x", "<div>"},
        {"unfinished comments", "<!--x"},
        {"unfinished tags", "<a href='"},
        {"declarations", "<![if"},
    };
    for (const Repeated &part : parts) {
        const qint64 small = nanosecondsFor(part, 4'000);
        const qint64 large = nanosecondsFor(part, 64'000);
        // 16 times the text: quadratic would be 256 times the time. 1 ms: what is too short to measure.
        EXPECT_LT(large, 64 * small + 1'000'000) << part.name << ' ' << small << ' ' << large;
    }
}

} // namespace
