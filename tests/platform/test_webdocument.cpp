// The document of a web view: reading, writing, replacing the body.
#include "platform/Literals.h"
#include "platform/toolkit/WebDocument.h"

#include <gtest/gtest.h>

namespace {

using platform::WebDocument;

QString bodyOf(const QString &html) {
    return WebDocument(html).bodyHtml();
}

TEST(WebDocument, ABodyIsReadAsBrowsersDoAndReadsAgainUnchanged) {
    const struct {
        const char *name;
        QString html;
        QString body = html;
    } bodies[] = {
        {"UnknownTagsLoseTheirCase", u"<O:P>a</O:P><X-y z=1></X-y>"_s, u"<o:p>a</o:p><x-y z=\"1\"></x-y>"_s},
        {"Misnesting", u"<p><b>a</p>b</b>"_s, u"<p><b>a</b></p><b>b</b>"_s},
        {"Comments", u"a<!-- b --><!--[if mso]><p>c</p><![endif]--><![if x]>d"_s,
         u"a<!-- b --><!--[if mso]><p>c</p><![endif]--><!--[if x]-->d"_s},
        {"EmptyAnchors", u"<a name=\"b\"></a>x<a name=e></a>"_s, u"<a name=\"b\"></a>x<a name=\"e\"></a>"_s},
        {"AddressesStay", u"<a href=\"http://a/?b=c&amp;d=é|{}\">x</a>"_s},
        {"AttributeValues", u"<p title='a\"b<c>&amp;&nbsp;' hidden>"_s,
         u"<p title=\"a&quot;b<c>&amp;&nbsp;\" hidden=\"\"></p>"_s},
        {"TextIsEscaped", u"1 < 2 &gt; &amp;&nbsp; \"©😀\""_s, u"1 &lt; 2 &gt; &amp;&nbsp; \"©😀\""_s},
        {"VoidElements", u"a<br/>b<img src=c><hr>"_s, u"a<br>b<img src=\"c\"><hr>"_s},
        {"ScriptsStayAsTheyAre", u"x<script>if (a<b && c) \"</p>\"</script>"_s},
        {"TheFirstNewlineOfPre", u"<pre>\n\na</pre><textarea>\n\nb</textarea><pre>\nc</pre>"_s,
         u"<pre>\n\na</pre><textarea>\n\nb</textarea><pre>c</pre>"_s},
        {"VectorGraphicsKeepTheirCase",
         u"<svg viewBox=\"0 0 1 1\" xmlns:xlink=\"u\"><linearGradient "
         "xlink:href=\"#a\"></linearGradient><foreignObject><p>x</p></foreignObject></svg>"_s},
        {"CharacterDataInATable", u"<table><tr><td><svg><desc><![CDATA[a<b>&]]> t</desc></svg></table>"_s,
         u"<table><tbody><tr><td><svg><desc>a&lt;b&gt;&amp; t</desc></svg></td></tr></tbody></table>"_s},
        {"CharacterDataBetweenCells", u"<table><math><mi><![CDATA[x]]> t"_s,
         u"<math><mi>x t</mi></math><table></table>"_s},
        {"CharacterDataElsewhereIsAComment", u"a<![CDATA[x]]>b"_s, u"a<!--[cdata[x]]-->b"_s},
        {"Templates", u"x<template><td>x</td></template>"_s},
    };
    for (const auto &[name, html, body] : bodies) {
        EXPECT_EQ(bodyOf(html), body) << name;
        EXPECT_EQ(bodyOf(WebDocument(html).documentElementOuterHtml()), body) << name << ", read again";
    }
}

TEST(WebDocument, ABodyIsReplacedInsideItsDocument) {
    const QString type =
        u"<!DOCTYPE html PUBLIC \"-//W3C//DTD HTML 4.01//EN\" \"http://www.w3.org/TR/html4/s.dtd\">"_s;
    const QString start = u"<html lang=\"de\"><head><title>t</title></head><body>"_s;
    const QString end = u"</body></html>"_s;
    const WebDocument document(type + start + u"x"_s + end);
    EXPECT_EQ(document.documentElementOuterHtml(), start + u"x"_s + end);
    EXPECT_EQ(document.withBodyHtml(u"<html><body z=w><tr><td>a<p>b"_s), type + start + u"a<p>b</p>"_s + end);
    EXPECT_EQ(WebDocument(u"<!doctype html>"_s).withBodyHtml(QString()),
              u"<!DOCTYPE html><html><head></head><body></body></html>"_s);
    EXPECT_TRUE(WebDocument(u"<frameset>"_s).withBodyHtml(u"x"_s).isNull());
}

// Each part nests in a browser, although its end tags, or their absence, suggest otherwise.
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
