// The body of an appointment and the invitation that is written into it, found again, replaced and removed.
#include "plugin/host/body/linkMaker.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;

namespace {

const QString bodyEnd = u"</body>"_s;

QString updated(const QString &body, const QString &invitation, bool isHtml) {
    return vlEmailBodyMgr::sharedInstance().getMailBodyContentWithVela(body, invitation, isHtml);
}

bool has(const QString &text, const char *part) {
    return text.contains(QLatin1String(part), Qt::CaseInsensitive);
}

// Whether the text has no mark by which the block is found.
bool isTheUsers(const QString &text) {
    return !has(text, "MacVlBookmark") && !has(text, "<font size=") && !has(text, "@</font>");
}

// The user's text stays unchanged for every invitation written at the end of the body.
void openUsersBody(Pieces &pieces, bool isHtml) {
    const QString before = pieces.nextText();
    const QString after = bodyEnd + pieces.nextText();
    const QString first = pieces.nextText();
    const QString second = pieces.nextText();
    const QString page = before + after;
    const bool isClean = isTheUsers(page) && isTheUsers(first) && isTheUsers(second) &&
                         after.lastIndexOf(bodyEnd) == 0 && !first.isEmpty() && !second.isEmpty();
    if (!isClean)
        return;
    const vlBodyHelper &helper = vlBodyHelper::sharedInstance();
    const QString added = updated(page, first, isHtml);
    claimSame(added, before + helper.insertVlBodyBookMark(first, isHtml) + after,
              "the block is added at the end");
    const QString changed = updated(added, second, isHtml);
    const QString removed = helper.removeVlBodyForDelete(changed);
    for (const QString &text : {changed, removed})
        claim(text.startsWith(before) && text.endsWith(after), "what the user wrote stays");
    claim(changed.count(kvl_BeginBookmark) == 1 && changed.count(kvl_EndBookmark) == 1,
          "the second invitation takes the place of the first");
    claim(isTheUsers(removed), "nothing of the bookmarks remains");
    if (!isHtml)
        return;
    claimSame(changed, updated(page, second, isHtml), "a replaced block is like a new one");
    claimSame(removed, page, "without its block the body is what it was");
}

qsizetype firstOf(const QString &text, std::initializer_list<const char *> parts) {
    qsizetype first = text.size();
    for (const char *part : parts) {
        const qsizetype at = text.indexOf(QLatin1String(part), 0, Qt::CaseInsensitive);
        first = at < 0 ? first : std::min(first, at);
    }
    return first;
}

qsizetype behindLastOf(const QString &text, std::initializer_list<const char *> parts) {
    qsizetype last = 0;
    for (const char *part : parts) {
        const QLatin1String text8(part);
        const qsizetype at = text.lastIndexOf(text8, -1, Qt::CaseInsensitive);
        last = at < 0 ? last : std::max(last, at + text8.size());
    }
    return last;
}

// Outside everything that could be an edge of a block.
QString head(const QString &body) {
    QString text = body.left(firstOf(body, {"<font size=", "<br><br>+<a name=", "<a name="}));
    while (!text.isEmpty() && text.back().isSpace()) // of the block when that begins with blanks
        text.chop(1);
    return text;
}

QString tail(const QString &body) {
    QString text = body.mid(behindLastOf(body, {"</a>", "</a>.<br><br>", "</font>"}));
    while (!text.isEmpty() && text.front().isSpace())
        text.remove(0, 1);
    return text;
}

// For every body: a block is inserted as a whole, and only text between edges of blocks is removed.
void openAnyBody(Pieces &pieces, bool isHtml) {
    const QString invitation = pieces.nextText();
    const QString body = QString::fromUtf8(pieces.rest());
    const vlBodyHelper &helper = vlBodyHelper::sharedInstance();
    const QString block = helper.insertVlBodyBookMark(invitation, isHtml);
    const QString removed = updated(body, QString(), isHtml);
    claim(removed.isNull() || (removed.startsWith(head(body)) && removed.endsWith(tail(body)) &&
                               removed.size() < body.size()),
          "only a block is removed");
    if (invitation.isEmpty())
        return;
    const QString result = updated(body, invitation, isHtml);
    claim(result.isNull() == body.isNull(), "a body stays a body");
    if (body.isNull())
        return;
    claim(result.size() <= body.size() + block.size(), "a body grows by its block at most");
    const qsizetype end = body.lastIndexOf(bodyEnd);
    const QString extended = end < 0 ? body + block : body.left(end) + block + body.mid(end);
    const bool isAdded = result == extended || result == block;
    claim(isAdded || (result.startsWith(head(body)) && result.endsWith(tail(body))),
          "what lies outside of all blocks stays");
    (void)helper.updateVlBodyWithVlBookmark(body, invitation);
    (void)helper.updateBodyForPAC(body, invitation, isHtml);
    (void)helper.convertHTMLToPlainText(body);
}

qsizetype addressEnd(QStringView text, qsizetype at) {
    for (; at < text.size(); ++at) {
        const QStringView rest = text.sliced(at);
        if (u" \r\n"_s.contains(text[at]) || rest.startsWith(kvl_BeginBookmark) ||
            rest.startsWith(kvl_EndBookmark))
            break;
    }
    return at;
}

// Without the links and line breaks the result equals the text.
void claimLinks(const QString &text) {
    static const QString opening = u"<a href=\""_s;
    static const QString lineBreak = u"<br>"_s;
    if (text.contains(opening))
        return;
    const QString linked = withLinksAndBreaks(text);
    qsizetype at = 0;
    qsizetype inText = 0;
    while (at < linked.size() && inText < text.size()) {
        if (text[inText] == u'\n') {
            claim(QStringView(linked).sliced(at).startsWith(lineBreak), "a line ends in a break");
            at += lineBreak.size();
            ++inText;
            continue;
        }
        if (!QStringView(linked).sliced(at).startsWith(opening)) {
            claim(linked[at++] == text[inText++], "nothing is changed but addresses");
            continue;
        }
        const QString address = text.mid(inText, addressEnd(text, inText) - inText);
        const QString link = opening + address + u"\">"_s + address + u"</a>"_s;
        claim(QStringView(linked).sliced(at).startsWith(link), "a link leads to what it shows");
        claim(address.startsWith(HTTP_TAG) || address.startsWith(HTTPS_TAG), "only addresses are linked");
        at += link.size();
        inText += address.size();
    }
    claim(at == linked.size() && inText == text.size(), "nothing is lost or added");
}

void open(const QByteArray &bytes) {
    Pieces pieces(bytes);
    const quint8 kind = pieces.nextByte();
    if (kind == 'l')
        claimLinks(QString::fromUtf8(pieces.rest()));
    else if (kind == 'u' || kind == 'U')
        openUsersBody(pieces, kind == 'U');
    else
        openAnyBody(pieces, kind == 'A');
}

const AddFuzzTarget target("body", open);

} // namespace
