#include "plugin/host/body/vlBodyHelper.h"
#include "tests/host/LinkWalk.h"

#include <QElapsedTimer>
#include <gtest/gtest.h>
#include <random>

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

// One scan has to come to what a walk for each address comes to, whichever address is a part of which.
TEST(PlainTextToHtml, OneScanGivesWhatAWalkForEachAddressGives) {
    const QStringList words = {"http://a",
                               "http://ab",
                               "https://a",
                               "https://b?http://a",
                               "http://c?http://ab",
                               "word",
                               "xhttp://a",
                               "xhttps://a",
                               "http://",
                               "http"};
    const QStringList blanks = {" ", " ", "  ", "\n", "\r\n"};
    std::mt19937 random(20261124);
    for (int round = 0; round < 20000; ++round) {
        QString text = QStringLiteral("x");
        for (int count = int(random() % 9); count > 0; --count)
            text += blanks[random() % blanks.size()] + words[random() % words.size()];
        const QString expected = linkedByWalking(text).replace("\n", "<br>");
        ASSERT_EQ(converted(text), expected) << qPrintable(text);
    }
}

TEST(PlainTextToHtml, TakesTimeInProportionToTheText) {
    // The second begins with an address that follows itself: from there on each is looked up.
    for (const char *begin : {"x", "x see https://a https://a see http://a"}) {
        QString text = QString::fromLatin1(begin);
        for (int i = 0; text.size() < 8'000'000; ++i)
            text += " see http://meet.example/j/" + QString::number(i) + "?from=http://other.example/\n";
        QElapsedTimer timer;
        timer.start();
        const QString html = converted(text);
        EXPECT_EQ(html.count("<a href="), text.count("see "));
        // A walk for each of the addresses takes hours.
        EXPECT_LT(timer.elapsed(), 20'000);
    }
}
