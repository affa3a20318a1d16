#include "platform/Literals.h"
#include "standin/mailhost/model/BodyText.h"

#include "tests/mailhost/PrintText.h"

#include <QTextBlock>
#include <QTextDocument>
#include <QTextList>
#include <gtest/gtest.h>

namespace mailhost {

namespace {

const QString begin = u"<a name=\"MarkBegin\"></a>"_s;
const QString end = u"<a name=\"MarkEnd\"></a>"_s;

class BodyTextTest : public testing::Test {
protected:
    void load(const QString &html) { body.setHtml(html); }
    QTextCursor before(const QString &text) {
        QTextCursor cursor = document.find(text);
        EXPECT_FALSE(cursor.isNull()) << qPrintable(text);
        cursor.setPosition(cursor.selectionStart());
        return cursor;
    }
    QTextCursor after(const QString &text) {
        QTextCursor cursor = document.find(text);
        EXPECT_FALSE(cursor.isNull()) << qPrintable(text);
        cursor.setPosition(cursor.selectionEnd());
        return cursor;
    }
    QTextDocument document;
    BodyText body{&document};
};

TEST_F(BodyTextTest, TypedTextGoesInAndNothingElseMoves) {
    load(
        u"<html><body lang=EN><p class='x'>Hello <b>big</b> world</p>\r\n<p>Second&nbsp;one</p></body></html>"_s);
    after(u"Hello"_s).insertText(u" <there>"_s);
    after(u"Second"_s).deleteChar();
    EXPECT_EQ(body.html(), u"<html><body lang=EN><p class='x'>Hello &lt;there&gt; <b>big</b> world</p>\r\n"
                           "<p>Secondone</p></body></html>"_s);
}

TEST_F(BodyTextTest, TypingAroundABlockAndAtTheEndsOfItsLinesStaysOutsideOfIt) {
    const QString forms[] = {
        u"<html><body><p>Mine</p>"_s + begin + u"<div>Join <a href=\"https://x.example/j\">here</a></div>"_s +
            end + u"<p>After</p></body></html>"_s,
        u"<html><body>Mine<br><br>"_s + begin + u"Join<br>here"_s + end + u"<br><br>After</body></html>"_s,
        u"<html><body><p>Mine</p><p>"_s + begin + u"Join here"_s + end + u"</p><p>After</p></body></html>"_s};
    const auto blockIn = [](const QString &html) {
        return html.mid(html.indexOf(begin), html.indexOf(end) + end.size() - html.indexOf(begin));
    };
    for (const QString &html : forms) {
        load(html);
        after(u"Mine"_s).insertText(u" own words"_s);
        before(u"After"_s).insertText(u"And "_s);
        EXPECT_EQ(body.html(),
                  QString(html).replace(u"Mine"_s, u"Mine own words"_s).replace(u"After"_s, u"And After"_s));
        QTextCursor cursor = before(u"Join"_s);
        cursor.movePosition(QTextCursor::StartOfLine);
        const int start = cursor.position();
        if (start > 0 && document.characterAt(start - 1) == QChar::ObjectReplacementCharacter)
            cursor.setPosition(start - 1);
        cursor.insertText(u"FIRST"_s);
        cursor = after(u"here"_s);
        while (!body.bookmarkAt(cursor.position()).isNull())
            cursor.movePosition(QTextCursor::NextCharacter);
        cursor.insertText(u"LAST"_s);
        const QString now = body.html();
        EXPECT_EQ(blockIn(now), blockIn(html));
        EXPECT_TRUE(now.contains(u"FIRST"_s) && now.contains(u"LAST"_s)) << qPrintable(now);
    }
}

TEST_F(BodyTextTest, TheReturnKeyMakesAParagraphOfTheSameKind) {
    load(u"<p style=\"margin:0\">one two</p><ul><li>item</li></ul>bare"_s);
    QTextCursor cursor = after(u"one"_s);
    cursor.insertBlock();
    cursor = after(u"item"_s);
    cursor.insertBlock();
    cursor.insertText(u"next"_s);
    EXPECT_EQ(body.html(), u"<p style=\"margin:0\">one</p><p style=\"margin:0\">&nbsp;two</p>"
                           "<ul><li>item</li><li>next</li></ul>bare"_s);
}

TEST_F(BodyTextTest, StyleIsPutAroundTheWordsThatHaveIt) {
    QTextCharFormat bold;
    bold.setFontWeight(QFont::Bold);
    load(u"<p>one two <i>three</i></p>"_s);
    document.find(u"two three"_s).mergeCharFormat(bold);
    EXPECT_EQ(body.html(), u"<p>one <b>two</b> <i><b>three</b></i></p>"_s);
    load(u"Hello"_s);
    document.find(u"Hello"_s).mergeCharFormat(bold);
    EXPECT_EQ(body.html(), u"<b>Hello</b>"_s) << "up to the end of a body without tags";
}

TEST_F(BodyTextTest, AParagraphMadeAListItemIsOneInTheHtml) {
    load(u"<p>before</p>"_s + begin + u"<p>block</p>"_s + end);
    QTextCursor cursor = before(u"before"_s);
    cursor.createList(QTextListFormat::ListDisc);
    EXPECT_EQ(body.html(), u"<p><ul><li>before</li></ul></p>"_s + begin + u"<p>block</p>"_s + end);
}

TEST_F(BodyTextTest, WhatHasNoPlaceInTheHtmlIsRewrittenWithItsBookmarks) {
    load(u"<ul><li>item</li></ul>"_s + begin + u"<p>block</p>"_s + end);
    QTextCursor cursor = before(u"item"_s);
    cursor.currentList()->remove(cursor.block());
    const QString html = body.html();
    EXPECT_FALSE(html.contains(u"<li"_s));
    EXPECT_LT(html.indexOf(u"item"_s), html.indexOf(begin));
    EXPECT_LT(html.indexOf(begin), html.indexOf(u">block"_s));
    EXPECT_LT(html.indexOf(u">block"_s), html.indexOf(end));
}

TEST_F(BodyTextTest, EverythingReplacedLeavesOnlyTheNewText) {
    load(u"<html><head><style>p{}</style></head><body><p>old</p>"_s + begin + u"<p>x</p>"_s + end +
         u"</body></html>"_s);
    QTextCursor cursor(&document);
    cursor.select(QTextCursor::Document);
    cursor.insertText(u"new"_s);
    const QString html = body.html();
    EXPECT_TRUE(html.contains(u">new<"_s)) << qPrintable(html);
    EXPECT_FALSE(html.contains(u"old"_s) || html.contains(begin) || html.contains(end)) << qPrintable(html);
    EXPECT_TRUE(html.contains(u"</body></html>"_s)) << qPrintable(html);
}

// Whatever is edited, what is shown is what is saved; only what is typed at a bookmark between two paragraphs
// comes back as a paragraph of its own.
TEST_F(BodyTextTest, AnyEditReadsBackAsShown) {
    const QString plain = u"<html><body><p>alpha <b>beta</b> gamma</p><div>delta<br>epsilon&nbsp;zeta</div>%1"
                          "<ul><li>eta</li><li>theta</li></ul>%2<p>iota &amp; kappa</p></body></html>"_s;
    std::srand(7);
    for (int round = 0; round < 600; ++round) {
        const bool marked = round % 2 == 1;
        load(marked ? plain.arg(begin, end) : plain.arg(QString(), QString()));
        for (int edit = 0; edit < 1 + round % 4; ++edit) {
            QTextCursor cursor(&document);
            cursor.setPosition(std::rand() % document.characterCount());
            switch (std::rand() % 4) {
            case 0:
                cursor.insertText(u"W&"_s);
                break;
            case 1:
                cursor.insertBlock();
                break;
            default:
                cursor.deleteChar();
            }
        }
        QTextDocument other;
        BodyText again(&other);
        again.setHtml(body.html());
        const auto shown = [marked](QString text) {
            text.remove(QRegularExpression(u"[ \\x{2028}\\x{fffc}\\x{a0}]"_s));
            return text.split(QChar(QChar::ParagraphSeparator), Qt::SkipEmptyParts)
                .join(marked ? u""_s : u"|"_s);
        };
        ASSERT_EQ(shown(other.toRawText()), shown(document.toRawText()))
            << round << ' ' << qPrintable(body.html());
    }
}

} // namespace
} // namespace mailhost
