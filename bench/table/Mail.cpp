#include "bench/table/Mail.h"

#include "platform/Literals.h"

namespace bench {

namespace {

const QString head =
    u"<html xmlns:o=\"urn:parlo:example:office-document\"><head><meta charset=\"utf-8\"><style>"
    "p.MailText { margin: 0cm; font-size: 11pt; font-family: Calibri, sans-serif; }</style></head>"
    "<body lang=\"EN-GB\" link=\"#0563C1\">\r\n<div class=\"WordSection1\">\r\n"_s;
const QString tail = u"</div>\r\n</body>\r\n</html>\r\n"_s;

const QString pieces[] = {
    u"<p class=\"MailText\"><span style=\"font-size:11.0pt;color:#1F497D\">Dear "
    "all,<o:p></o:p></span></p>\r\n"
    "<p class=\"MailText\"><o:p>&nbsp;</o:p></p>\r\n"_s,
    u"<p class=\"MailText\">Point %1 of the agenda: figures &amp; plans for the coming quarter, with the "
    "numbers that <b>Ad\u00e8le</b> and <i>J\u00f6rg</i> have sent. Please read them <u>before</u> the "
    "meeting, since there will be no time to go through each of them.<o:p></o:p></p>\r\n"_s,
    u"<p class=\"MailText\">The room is booked; who cannot come uses "
    "<a "
    "href=\"https://files.example.org/r/%1?id=42&amp;x=1\">https://files.example.org/r/%1</a>.</p>\r\n"_s,
    u"<ul type=\"disc\"><li class=\"MailText\">first, the budget<br>as of %1</li>"
    "<li class=\"MailText\">\u4f1a\u8b70\u306e\u8b70\u984c \u2014 agenda item</li></ul>\r\n"_s,
    u"<table border=\"0\" cellspacing=\"0\"><tr><td style=\"padding:0cm 5.4pt\"><p class=\"MailText\">Q%1"
    "</p></td><td><p class=\"MailText\" align=\"right\">1,204&nbsp;&euro;</p></td></tr></table>\r\n"_s,
};

} // namespace

QString mailOf(qsizetype bytes) {
    QString html = head;
    html.reserve(bytes);
    // A few letters take more than one byte.
    constexpr qsizetype countingEvery = 5;
    qsizetype size = head.size() + tail.size();
    for (int i = 0; size < bytes; ++i) {
        const QString &piece = pieces[i % countingEvery];
        const QString text =
            piece.contains(u'%') ? QString(piece).replace(u"%1"_s, QString::number(i)) : piece;
        size += text.toUtf8().size();
        html += text;
    }
    return html + tail;
}

QString nestedElements(int depth) {
    return u"<div>"_s.repeated(depth) + u"x"_s + u"</div>"_s.repeated(depth);
}

} // namespace bench
