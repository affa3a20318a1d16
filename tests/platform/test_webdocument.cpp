#include "platform/Literals.h"
#include "platform/toolkit/WebDocument.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>

namespace {

using platform::WebDocument;

QString bodyOf(const QString &html) {
    return WebDocument(html).innerHtml(u"body"_s);
}

struct Case {
    const char *name;
    QString html;
    QString body;
};

void PrintTo(const Case &example, std::ostream *out) {
    *out << example.name;
}

class WebBody : public testing::TestWithParam<Case> {};

TEST_P(WebBody, IsReadAsBrowsersDoAndStaysSo) {
    const QString body = bodyOf(GetParam().html);
    EXPECT_EQ(body, GetParam().body) << qPrintable(body);
    const QString again = bodyOf(WebDocument(GetParam().html).toHtml());
    EXPECT_EQ(again, body) << "a second reading: " << qPrintable(again);
}

std::string caseName(const testing::TestParamInfo<Case> &info) {
    return info.param.name;
}

QString same(const char *html) {
    return QString::fromUtf8(html);
}

const Case mail[] = {
    {"BareText", same("bare &amp; text"), same("bare &amp; text")},
    {"ProgramTags", same("<p class=\"MsoNormal\">a<o:p>&nbsp;</o:p></p>"),
     same("<p class=\"MsoNormal\">a<o:p>&nbsp;</o:p></p>")},
    {"UnknownTagsLoseTheirCase", same("<O:P>a</O:P><X-y z=1></X-y>"),
     same("<o:p>a</o:p><x-y z=\"1\"></x-y>")},
    {"BoldAroundAParagraph", same("<b><p>a</p></b>"), same("<b><p>a</p></b>")},
    {"Misnesting", same("<p><b>a</p>b</b>"), same("<p><b>a</b></p><b>b</b>")},
    {"Comments", same("a<!-- b --><!--[if mso]><p>c</p><![endif]--><![if x]>d"),
     same("a<!-- b --><!--[if mso]><p>c</p><![endif]--><!--[if x]-->d")},
    {"EmptyAnchors", same("<a name=\"b\"></a>x<a name=e></a>"),
     same("<a name=\"b\"></a>x<a name=\"e\"></a>")},
    {"AddressesStay", same("<a href=\"http://a/?b=c&amp;d=é|{}\">x</a>"),
     same("<a href=\"http://a/?b=c&amp;d=é|{}\">x</a>")},
    {"AttributeValues", same("<p title='a\"b<c>&amp;&nbsp;' hidden>"),
     same("<p title=\"a&quot;b<c>&amp;&nbsp;\" hidden=\"\"></p>")},
    {"TextIsEscaped", same("1 < 2 &gt; \"©\""), same("1 &lt; 2 &gt; \"©\"")},
    {"TablesGetTheirBodies", same("<table><tr><td>a</table>"),
     same("<table><tbody><tr><td>a</td></tr></tbody></table>")},
    {"VoidElements", same("a<br/>b<img src=c><hr>"), same("a<br>b<img src=\"c\"><hr>")},
};
INSTANTIATE_TEST_SUITE_P(Mail, WebBody, testing::ValuesIn(mail), caseName);

const Case standard[] = {
    {"ScriptsStayAsTheyAre", same("x<script>if (a<b && c) \"</p>\"</script>"),
     same("x<script>if (a<b && c) \"</p>\"</script>")},
    {"TheFirstNewlineOfPre", same("<pre>\n\na</pre><textarea>\n\nb</textarea><pre>\nc</pre>"),
     same("<pre>\n\na</pre><textarea>\n\nb</textarea><pre>c</pre>")},
    {"VectorGraphicsKeepTheirCase",
     same("<svg viewBox=\"0 0 1 1\" xmlns:xlink=\"u\"><linearGradient xlink:href=\"#a\"></linearGradient>"
          "<foreignObject><p>x</p></foreignObject></svg>"),
     same("<svg viewBox=\"0 0 1 1\" xmlns:xlink=\"u\"><linearGradient xlink:href=\"#a\"></linearGradient>"
          "<foreignObject><p>x</p></foreignObject></svg>")},
    {"CharacterDataInATable", same("<table><tr><td><svg><desc><![CDATA[a<b>&]]> t</desc></svg></table>"),
     same("<table><tbody><tr><td><svg><desc>a&lt;b&gt;&amp; t</desc></svg></td></tr></tbody></table>")},
    {"CharacterDataBetweenCells", same("<table><math><mi><![CDATA[x]]> t"),
     same("<math><mi>x t</mi></math><table></table>")},
    {"CharacterDataElsewhereIsAComment", same("a<![CDATA[x]]>b"), same("a<!--[cdata[x]]-->b")},
    {"Templates", same("x<template><td>x</td></template>"), same("x<template><td>x</td></template>")},
    {"OutsideThePlane", same("😀"), same("😀")},
};
INSTANTIATE_TEST_SUITE_P(Standard, WebBody, testing::ValuesIn(standard), caseName);

TEST(WebDocument, OfNothingHasHeadAndBody) {
    for (const QString &html : {QString(), QString(u""_s)}) {
        const WebDocument document(html);
        EXPECT_EQ(document.documentElementOuterHtml(), u"<html><head></head><body></body></html>"_s);
        EXPECT_EQ(document.toHtml(), WebDocument().toHtml());
    }
}

TEST(WebDocument, TheDocumentTypeIsOfTheDocumentAndNotOfItsElement) {
    const QString type =
        u"<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01//EN\" \"http://www.w3.org/TR/html4/s.dtd\">"_s;
    const QString element = u"<html lang=\"de\"><head><title>t</title></head><body>x</body></html>"_s;
    const WebDocument document(type + element);
    EXPECT_EQ(document.documentElementOuterHtml(), element);
    EXPECT_EQ(document.toHtml(), type + element);
    EXPECT_EQ(WebDocument(u"<!doctype html>x"_s).toHtml(),
              u"<!DOCTYPE html><html><head></head><body>x</body></html>"_s);
}

TEST(WebDocument, TheFirstElementOfATagIsFoundInDocumentOrderInAnyCase) {
    const WebDocument document(u"<div><p><i>first</i></p></div><p>second</p><o:p>third</o:p>"_s);
    EXPECT_EQ(document.innerHtml(u"P"_s), u"<i>first</i>"_s);
    EXPECT_EQ(document.innerHtml(u"o:p"_s), u"third"_s);
    EXPECT_TRUE(document.hasElement(u"Body"_s));
    EXPECT_FALSE(document.hasElement(u"table"_s));
    EXPECT_FALSE(document.hasElement(QString()));
}

TEST(WebDocument, AnAbsentElementHasNoTextAndAnEmptyOneAnEmptyText) {
    WebDocument document(u"<div></div>"_s);
    EXPECT_TRUE(document.innerHtml(u"table"_s).isNull());
    EXPECT_FALSE(document.innerHtml(u"div"_s).isNull());
    EXPECT_FALSE(document.setInnerHtml(u"table"_s, u"x"_s));
    EXPECT_EQ(document.innerHtml(u"body"_s), u"<div></div>"_s);
}

TEST(WebDocument, AWholeDocumentSetIntoTheBodyLosesItsOuterTags) {
    WebDocument document(u"<html><head><title>old</title></head><body class=\"k\">old</body></html>"_s);
    const QString set =
        u"<!DOCTYPE html><html x=y><head><title>new</title></head><body z=\"w\"><p>new</p></body></html>"_s;
    EXPECT_TRUE(document.setInnerHtml(u"body"_s, set));
    EXPECT_EQ(document.documentElementOuterHtml(), u"<html><head><title>old</title></head><body class=\"k\">"
                                                   "<title>new</title><p>new</p></body></html>"_s);
}

TEST(WebDocument, SettingTheDocumentsOwnTextIntoItsBodyTwiceDoublesNothing) {
    const QString body = u"a<b>b</b><!-- c --><o:p>&nbsp;</o:p><p>d</p>"_s;
    WebDocument document(body);
    for (int i = 0; i < 2; ++i) {
        document.setInnerHtml(u"body"_s, document.documentElementOuterHtml());
        EXPECT_EQ(document.innerHtml(u"body"_s), body);
    }
}

TEST(WebDocument, AFragmentIsReadAsTheContentOfItsElement) {
    WebDocument document(u"<table><tbody></tbody></table><div></div><x-y></x-y><textarea></textarea>"_s);
    EXPECT_TRUE(document.setInnerHtml(u"tbody"_s, u"<tr><td>a"_s));
    EXPECT_TRUE(document.setInnerHtml(u"div"_s, u"<tr><td>a"_s));
    EXPECT_TRUE(document.setInnerHtml(u"x-y"_s, u"<p>b"_s));
    EXPECT_TRUE(document.setInnerHtml(u"textarea"_s, u"<p>c"_s));
    EXPECT_EQ(document.innerHtml(u"body"_s), u"<table><tbody><tr><td>a</td></tr></tbody></table><div>a</div>"
                                             "<x-y><p>b</p></x-y><textarea>&lt;p&gt;c</textarea>"_s);
}

TEST(WebDocument, AMovedDocumentTakesItsTreeAlong) {
    WebDocument first(u"<p>a</p>"_s);
    WebDocument second(std::move(first));
    EXPECT_EQ(second.innerHtml(u"p"_s), u"a"_s);
    first = WebDocument(u"<p>b</p>"_s);
    EXPECT_EQ(first.innerHtml(u"p"_s), u"b"_s);
}

// Each nests for a browser although its end tags, or the lack of them, suggest otherwise.
TEST(WebDocument, DeepNestingIsFlattenedAndNoTextIsLost) {
    for (const char *part :
         {"<div>", "<span><div></span>", "<li><dd>", "<b><div></b></x>", "<option><p>", "<table><tr><td>",
          "<svg><title>", "<div a=\"'>", "<div a='b>' =\"c>", "<!--><div>"}) {
        const QString html = QString::fromUtf8(part).repeated(20'000) + u"end"_s;
        QElapsedTimer timer;
        timer.start();
        const WebDocument document(html);
        const QString text = document.toHtml();
        EXPECT_TRUE(text.contains(u"end"_s)) << part;
        EXPECT_LT(timer.elapsed(), 3'000) << part;
    }
}

TEST(WebDocument, TheOuterElementsOfAFlattenedTextEndWhereTheyDid) {
    const QString deep = u"<div>"_s.repeated(5'000) + u"x"_s + u"</div>"_s.repeated(5'000);
    const QString body = bodyOf(deep + u"<p>after</p>"_s);
    EXPECT_TRUE(body.endsWith(u"</div><p>after</p>"_s)) << qPrintable(body.right(60));
    EXPECT_EQ(body.count(u"<div>"_s), 2'000);
}

TEST(WebDocument, ManyElementsSideBySideAreNotFlattened) {
    for (const char *part :
         {"<p>x</p>", "<div><font>y</div></font>", "<a name=\"z\"></a>", "<b>i<i>j</b>k</i>"}) {
        const QString html = QString::fromUtf8(part).repeated(6'000);
        const QString name = QString::fromUtf8(part).mid(1).split(QRegularExpression(u"[ >]"_s)).first();
        EXPECT_GE(bodyOf(html).count(u'<' + name), 6'000) << part;
    }
}

TEST(WebDocument, ACutAnywhereIsStillADocument) {
    const QString html = u"<!DOCTYPE html PUBLIC \"a\"><p class=\"x\">ä<!-- c --><o:p>&nbsp;</o:p><table><td>"
                         "<select><option>a</select><svg><p></svg><script>a</script></body></html>"_s;
    for (int length = 0; length <= html.size(); ++length) {
        WebDocument document(html.left(length));
        EXPECT_TRUE(document.hasElement(u"body"_s)) << length;
        EXPECT_TRUE(document.setInnerHtml(u"body"_s, html.mid(length))) << length;
    }
}

} // namespace
