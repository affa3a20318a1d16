// The tree of a web document: what it is read and written as.
#include "platform/Literals.h"
#include "platform/toolkit/WebDocument.h"

#include <gtest/gtest.h>

namespace {

using platform::WebDocument;

QString bodyOf(const QString &html) {
    return WebDocument(html).innerHtml(u"body"_s);
}

struct Case {
    const char *name;
    const char *html;
    const char *body = nullptr; // nullptr: as the HTML
};

void PrintTo(const Case &example, std::ostream *out) {
    *out << example.name;
}

class WebBody : public testing::TestWithParam<Case> {};

TEST_P(WebBody, IsReadAsBrowsersDoAndStaysSo) {
    const QString html = QString::fromUtf8(GetParam().html);
    const QString body = bodyOf(html);
    EXPECT_EQ(body, GetParam().body ? QString::fromUtf8(GetParam().body) : html) << qPrintable(body);
    const QString again = bodyOf(WebDocument(html).documentElementOuterHtml());
    EXPECT_EQ(again, body) << "a second reading: " << qPrintable(again);
}

const Case bodies[] = {
    {"BareText", "bare &amp; text"},
    {"ProgramTags", "<p class=\"MsoNormal\">a<o:p>&nbsp;</o:p></p>"},
    {"UnknownTagsLoseTheirCase", "<O:P>a</O:P><X-y z=1></X-y>", "<o:p>a</o:p><x-y z=\"1\"></x-y>"},
    {"BoldAroundAParagraph", "<b><p>a</p></b>"},
    {"Misnesting", "<p><b>a</p>b</b>", "<p><b>a</b></p><b>b</b>"},
    {"Comments", "a<!-- b --><!--[if mso]><p>c</p><![endif]--><![if x]>d",
     "a<!-- b --><!--[if mso]><p>c</p><![endif]--><!--[if x]-->d"},
    {"EmptyAnchors", "<a name=\"b\"></a>x<a name=e></a>", "<a name=\"b\"></a>x<a name=\"e\"></a>"},
    {"AddressesStay", "<a href=\"http://a/?b=c&amp;d=é|{}\">x</a>"},
    {"AttributeValues", "<p title='a\"b<c>&amp;&nbsp;' hidden>",
     "<p title=\"a&quot;b<c>&amp;&nbsp;\" hidden=\"\"></p>"},
    {"TextIsEscaped", "1 < 2 &gt; \"©\"", "1 &lt; 2 &gt; \"©\""},
    {"TablesGetTheirBodies", "<table><tr><td>a</table>", "<table><tbody><tr><td>a</td></tr></tbody></table>"},
    {"VoidElements", "a<br/>b<img src=c><hr>", "a<br>b<img src=\"c\"><hr>"},
    {"ScriptsStayAsTheyAre", "x<script>if (a<b && c) \"</p>\"</script>"},
    {"TheFirstNewlineOfPre", "<pre>\n\na</pre><textarea>\n\nb</textarea><pre>\nc</pre>",
     "<pre>\n\na</pre><textarea>\n\nb</textarea><pre>c</pre>"},
    {"VectorGraphicsKeepTheirCase",
     "<svg viewBox=\"0 0 1 1\" xmlns:xlink=\"u\"><linearGradient "
     "xlink:href=\"#a\"></linearGradient><foreignObject><p>x</p></foreignObject></svg>"},
    {"CharacterDataInATable", "<table><tr><td><svg><desc><![CDATA[a<b>&]]> t</desc></svg></table>",
     "<table><tbody><tr><td><svg><desc>a&lt;b&gt;&amp; t</desc></svg></td></tr></tbody></table>"},
    {"CharacterDataBetweenCells", "<table><math><mi><![CDATA[x]]> t",
     "<math><mi>x t</mi></math><table></table>"},
    {"CharacterDataElsewhereIsAComment", "a<![CDATA[x]]>b", "a<!--[cdata[x]]-->b"},
    {"Templates", "x<template><td>x</td></template>"},
    {"OutsideThePlane", "😀"},
};
INSTANTIATE_TEST_SUITE_P(WebDocument, WebBody, testing::ValuesIn(bodies),
                         [](const auto &info) { return std::string(info.param.name); });

TEST(WebDocument, TheDocumentTypeIsOfTheDocumentAndNotOfItsElement) {
    const QString type =
        u"<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01//EN\" \"http://www.w3.org/TR/html4/s.dtd\">"_s;
    const QString element = u"<html lang=\"de\"><head><title>t</title></head><body>x</body></html>"_s;
    const WebDocument document(type + element);
    EXPECT_EQ(document.documentElementOuterHtml(), element);
    EXPECT_EQ(document.withInnerHtml(u"body"_s, u"x"_s), type + element);
    EXPECT_EQ(WebDocument(u"<!doctype html>"_s).withInnerHtml(u"body"_s, u"x"_s),
              u"<!DOCTYPE html><html><head></head><body>x</body></html>"_s);
}

TEST(WebDocument, TheFirstElementOfATagIsFoundInDocumentOrderInAnyCase) {
    EXPECT_EQ(WebDocument(QString()).documentElementOuterHtml(),
              u"<html><head></head><body></body></html>"_s);
    const WebDocument document(u"<div><p><i>first</i></p></div><p>second</p><o:p>third</o:p><b></b>"_s);
    EXPECT_EQ(document.innerHtml(u"P"_s), u"<i>first</i>"_s);
    EXPECT_EQ(document.innerHtml(u"o:p"_s), u"third"_s);
    EXPECT_FALSE(document.innerHtml(u"b"_s).isNull());
    EXPECT_TRUE(document.innerHtml(u"table"_s).isNull());
    EXPECT_TRUE(document.withInnerHtml(u"table"_s, u"x"_s).isNull());
    EXPECT_TRUE(document.hasElement(u"Body"_s));
    EXPECT_FALSE(document.hasElement(u"table"_s) || document.hasElement(QString()));
}

TEST(WebDocument, AWholeDocumentSetIntoTheBodyLosesItsOuterTags) {
    const QString old =
        u"<!DOCTYPE html><html><head><title>old</title></head><body class=\"k\">old</body></html>"_s;
    const QString set =
        u"<!DOCTYPE html><html x=y><head><title>new</title></head><body z=\"w\"><p>new</p></body></html>"_s;
    EXPECT_EQ(WebDocument(old).withInnerHtml(u"body"_s, set),
              u"<!DOCTYPE html><html><head><title>old</title></head><body class=\"k\">"
              "<title>new</title><p>new</p></body></html>"_s);
}

TEST(WebDocument, AFragmentIsReadAsTheContentOfItsElement) {
    const struct {
        const char *element;
        const char *content;
        const char *result;
    } cases[] = {
        {"tbody", "<tr><td>a", "<table><tbody><tr><td>a</td></tr></tbody></table>"},
        {"div", "<tr><td>a", "<div>a</div>"},
        {"x-y", "<p>b", "<x-y><p>b</p></x-y>"},
        {"textarea", "<p>c", "<textarea>&lt;p&gt;c</textarea>"},
        {"pre", "\n\nd", "<pre>\n\n\nd</pre>"},
        {"script", "a<b", "<script>a<b</script>"},
    };
    const WebDocument document(u"<table><tbody></tbody></table><div></div><x-y></x-y><textarea></textarea>"
                               "<pre></pre><script></script>"_s);
    for (const auto &one : cases) {
        const QString html =
            document.withInnerHtml(QLatin1String(one.element), QString::fromUtf8(one.content));
        EXPECT_TRUE(html.contains(QLatin1String(one.result))) << qPrintable(html);
    }
}

// Each nests for a browser although its end tags, or the lack of them, suggest otherwise.
TEST(WebDocument, DeepNestingIsFlattenedAndNoTextIsLost) {
    for (const char *part :
         {"<div>", "<span><div></span>", "<li><dd>", "<b><div></b></x>", "<option><p>", "<table><tr><td>",
          "<svg><title>", "<div a=\"'>", "<div a='b>' =\"c>", "<!--><div>"}) {
        const QString html = QString::fromUtf8(part).repeated(20'000) + u"end"_s;
        EXPECT_TRUE(WebDocument(html).documentElementOuterHtml().contains(u"end"_s)) << part;
    }
}

TEST(WebDocument, OnlyWhatIsNestedIsFlattened) {
    const QString deep = u"<div>"_s.repeated(5'000) + u"x"_s + u"</div>"_s.repeated(5'000);
    const QString body = bodyOf(deep + u"<p>after</p>"_s);
    EXPECT_TRUE(body.endsWith(u"</div><p>after</p>"_s)) << qPrintable(body.right(60));
    EXPECT_EQ(body.count(u"<div>"_s), 2'000);
    for (const QString &part : {u"<p>x</p>"_s, u"<div><font>y</div></font>"_s, u"<b>i<i>j</b>k</i>"_s})
        EXPECT_GE(bodyOf(part.repeated(6'000)).count(part.first(2)), 6'000) << qPrintable(part);
}

} // namespace
