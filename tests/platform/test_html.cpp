// HTML as plain characters.
#include "platform/Literals.h"
#include "platform/services/html/HtmlImporter.h"

#include <gtest/gtest.h>

namespace {

TEST(HtmlImporter, GivesTheTextOfARichTextImporter) {
    const struct {
        const char *name;
        QString html;
        QString text;
    } cases[] = {
        // blocks
        {"DocumentTagsGiveNothing",
         u"<html><head><title>t</title><style>p{}</style></head><body>x</body></html>"_s, u"x"_s},
        {"TextAfterTheEndOfTheDocument", u"<body>a</body></html>b<p>c"_s, u"ab\nc\n"_s},
        {"AnEmptyBlockGivesABreak", u"<p>a</p><p></p><div> </div>b"_s, u"a\n\n\nb"_s},
        {"NestedEmptyBlocksGiveOneBreak", u"<div><div><p></p></div></div>"_s, u"\n"_s},
        {"AParagraphIsEndedByABlock", u"<p>a<div>b</div>c"_s, u"a\nb\nc"_s},
        {"ARuleIsAnEmptyBlock", u"a<hr>b"_s, u"a\n\nb"_s},
        {"AParagraphIsEndedByABlockInAnInnerElement", u"<p>a<b><br>b<div>c</div>"_s, u"a\u2028b\nc\n"_s},
        {"TheEndOfAFormatEndsNoParagraph", u"<span><p>a</span>b</p>"_s, u"ab\n"_s},
        {"TextEndsTheHead", u"<head><title>t</title> a<p>b"_s, u"a\nb\n"_s},
        // lines
        {"ABreakElsewhereEndsTheLine", u"a<br>b<div>c<br>d</div>"_s, u"a\nb\nc\nd\n"_s},
        {"TheEndOfABlockReplacesATrailingBreak", u"<p>a<br></p><div>b<br></div>"_s, u"a\nb\n"_s},
        {"TheEndOfABlockReplacesOneBreakOnly", u"<p>a<br><br></p>"_s, u"a\u2028\n"_s},
        {"ABreakAloneIsAnEmptyLine", u"<p><br></p><div><br></div>"_s, u"\n\n"_s},
        {"BlanksCollapse", u"  a \n\t b  <b> c</b>"_s, u"a b c"_s},
        {"TheEndOfABlockReplacesATrailingBlank", u"<p>a </p>b <div>c </div> "_s, u"a\nb\nc\n"_s},
        {"ABlankBeforeABreakIsDropped", u"a <br> b"_s, u"a\nb"_s},
        {"PreformattedTextStays", u"<pre>\n x\r\n\n  y\r z\u0096</pre>w"_s, u" x\n\n  y\n z\u2013\nw"_s},
        // structures
        {"Bullets", u"<ul><li>a</li> <li>b<br>c</ul>d"_s, u"\t•\ta\n\t•\tb\u2028c\nd"_s},
        {"Numbers", u"<ol><li>a<li>b</ol><ol start=7><li>c<li value=3>d<li>e</ol>"_s,
         u"\t1.\ta\n\t2.\tb\n\t7.\tc\n\t3.\td\n\t4.\te\n"_s},
        {"TheFirstBlockOfAnItemIsOnItsLine", u"<ul><li><p>a</p><p>b</p></li></ul>"_s, u"\t•\ta\nb\n"_s},
        {"AListInAnItem", u"<ol><li>a<ul><li>b</li></ul></li><li>c</li></ol>"_s,
         u"\t1.\ta\n\t•\tb\n\t2.\tc\n"_s},
        {"AnEmptyItem", u"<ul><li></li></ul>"_s, u"\t•\t\n"_s},
        {"ATableInACellKeepsItsRows", u"<table><tr><td><table><tr><td>a<tr><td>b</table><td>c</table>d"_s,
         u"a\nb\nc\nd"_s},
        {"EachCellIsALine", u"x<table> <tr> <td>a</td> <td></td> </tr> <tr> <th> c </th> </tr> </table>y"_s,
         u"x\na\n\nc\ny"_s},
        {"AnImageIsACharacter", u"a<img src='cid:1' alt='p'>b"_s, u"a\ufffcb"_s},
        // invisible
        {"Scripts", u"a<script>if(x<y){'<p>'}</script>b<style>p{}</style>c"_s, u"abc"_s},
        {"NotDisplayed",
         u"a<div style='color:red; DISPLAY : none !important'>b<p>c<br></div><b style='display:nonesuch'>d"_s,
         u"ad"_s},
        {"CommentsAndConditions",
         u"a<!-- <p>x</p> --><!--[if mso]>y<![endif]--><![if !mso]>b<![endif]><?xml z?>c"_s, u"abc"_s},
        {"ADeclaredEncodingIsIgnored", u"<meta charset=utf-16><meta charset=iso-8859-1>é"_s, u"é"_s},
        // characters
        {"LessThanIsText", u"<p>1 < 2 & 3<"_s, u"1 < 2 & 3<\n"_s},
        {"Entities", u"&lt;&amp;&eacute;&#8364;&#x1F600;"_s, u"<&é€😀"_s},
        {"ReferencesToNoCharacter", u"&#0;&#xd800;&#x110000;&#99999999999;&#;&#x;&nosuch;&amp"_s,
         u"\ufffd\ufffd\ufffd\ufffd&#;&#x;&nosuch;&amp"_s},
        {"WindowsCharacters", u"&#150;\u0093a\u0094&#128;"_s, u"–“a”€"_s},
        {"OtherTwoByteCharacters", u"\u00a9\u00ab\u00bf\u0081"_s, u"\u00a9\u00ab\u00bf\u0081"_s},
        {"ALoneSurrogate", u"é"_s + QChar(0xd83d) + u"ü"_s, u"é\ufffdü"_s},
        {"ANul", u"a"_s + QChar(0) + u"b"_s, u"ab"_s},
        {"UnknownTags", u"<p>a<o:p>&nbsp;</o:p></p><x-y>b"_s, u"a\u00a0\nb"_s},
    };
    for (const auto &[name, html, text] : cases)
        EXPECT_EQ(platform::plainTextOfHtml(html), text) << name;
}

// Linear in its length: with a faster growth the test would exceed its time limit.
TEST(HtmlImporter, ALongBrokenTextIsReadInTime) {
    for (const char *part : {"</b>x<div>", "<!--x", "<a href='", "<![if", "&#x"})
        EXPECT_FALSE(
            platform::plainTextOfHtml(u"words"_s + QString::fromLatin1(part).repeated(200'000)).isEmpty())
            << part;
}

} // namespace
