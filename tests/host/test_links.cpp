// Addresses in a plain invitation become links.
#include "plugin/host/body/vlBodyHelper.h"

#include <gtest/gtest.h>

namespace {

QString link(const QString &address) {
    return "<a href=\"" + address + "\">" + address + "</a>";
}

QString converted(const QString &text) {
    return vlBodyHelper::sharedInstance().convertPlainTextToHTML(text);
}

} // namespace

TEST(PlainTextToHtml, LinksWhatHasTextBeforeItAndABlankOrTheEndBehindIt) {
    const QString a = "http://a.example/j/1", b = "https://b.example/j/2";
    const struct {
        QString text, html;
    } cases[] = {
        {"Join " + a + " now", "Join " + link(a) + " now"},
        {"Join " + a + "\r\nnow", "Join " + link(a) + "\r<br>now"},
        {"Join " + a, "Join " + link(a)},
        {"Join " + a + "\n\n", "Join " + link(a)},
        {a + " is where we meet", a + " is where we meet"},
        {" \t" + a + " is where we meet", " \t" + a + " is where we meet"},
        {"Join " + b + " or " + a + " now", "Join " + link(b) + " or " + link(a) + " now"},
        {a + " or " + b + " now", a + " or " + link(b) + " now"},
        {"Join http://a http://b now", "Join " + link("http://a") + " http://b now"},
        {"Join " + a + " and " + a + " now", "Join " + link(a) + " and " + link(a) + " now"},
        {"Join http://a or http://ab x", "Join " + link("http://a") + " or " + link("http://ab") + " x"},
        {"Join http://ab or http://a x", "Join " + link("http://ab") + " or " + link("http://a") + " x"},
        {"x http://ahttp://a z http://a y", "x " + link("http://ahttp://a") + " z http://a y"},
        {"x https://chttp://d y https://c<a z",
         "x https://c" + link("http://d") + " y " + link("https://c<a") + " z"},
        {"(http://a) and more", "(" + link("http://a)") + " and more"},
        {"no address: http:/x\nhttp", "no address: http:/x<br>http"},
        {"\n\nA\nB\n", "A<br>B"},
        {"\u2028\u2029", ""},
        {"", ""},
    };
    for (const auto &c : cases)
        EXPECT_EQ(converted(c.text), c.html);
    EXPECT_TRUE(converted(QString()).isNull());
    EXPECT_FALSE(converted("").isNull());
}
