// The body of an appointment: an invitation is written into it, found again, replaced and removed.
#include "plugin/host/body/linkMaker.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "tests/fuzz/FuzzTarget.h"

#include <QRegularExpression>

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

// The user's text stays unchanged, whatever invitation is written at the end of the body.
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
        claim(text.startsWith(before) && text.endsWith(after), "the user's text stays");
    claim(changed.count(kvl_BeginBookmark) == 1 && changed.count(kvl_EndBookmark) == 1,
          "the second invitation replaces the first");
    claim(isTheUsers(removed), "no bookmark remains");
    if (!isHtml)
        return;
    claimSame(changed, updated(page, second, isHtml), "a replaced block equals a new one");
    claimSame(removed, page, "without its block the body is as before");
}

constexpr auto edgeOptions =
    QRegularExpression::CaseInsensitiveOption | QRegularExpression::UseUnicodePropertiesOption;

// The text before everything that could be the beginning of a block, with the blanks before that.
QString head(const QString &body) {
    static const QRegularExpression edge(uR"(\s*(<font size=|(<br><br>\+)?<a name=|\z))"_s, edgeOptions);
    return body.left(body.indexOf(edge));
}

// The text after everything that could be the end of a block, with the blanks after that.
QString tail(const QString &body) {
    static const QRegularExpression edge(uR"((\A|</a>(\.<br><br>)?|</font>)\s*)"_s, edgeOptions);
    QRegularExpressionMatch last;
    const qsizetype at = body.lastIndexOf(edge, -1, &last);
    return at < 0 ? body : body.mid(last.capturedEnd());
}

// For every body: a block is inserted unchanged, and only text between edges of blocks is removed.
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
    claim(result.isNull() == body.isNull(), "a missing body stays missing");
    if (body.isNull())
        return;
    claim(result.size() <= body.size() + block.size(), "a body grows at most by its block");
    const qsizetype end = body.lastIndexOf(bodyEnd);
    const QString extended = end < 0 ? body + block : body.left(end) + block + body.mid(end);
    const bool isAdded = result == extended || result == block;
    claim(isAdded || (result.startsWith(head(body)) && result.endsWith(tail(body))),
          "the text outside of all blocks stays");
    (void)helper.updateVlBodyWithVlBookmark(body, invitation);
    (void)helper.updateBodyForPAC(body, invitation, isHtml);
    (void)helper.convertHTMLToPlainText(body);
}

// Without the links and line breaks the result equals the text.
void claimLinks(const QString &text) {
    static const QRegularExpression link(uR"regex(<a href="(https?://[^ \r\n]*?)">\1</a>)regex"_s);
    if (text.contains(u"<a href=\""_s) || text.contains(u"<br>"_s))
        return;
    const QString linked = withLinksAndBreaks(text);
    for (const QRegularExpressionMatch &match : link.globalMatch(linked))
        claim(!match.captured(1).contains(kvl_BeginBookmark), "a bookmark ends an address");
    QString back = linked;
    claimSame(back.replace(link, u"\\1"_s).replace(u"<br>"_s, u"\n"_s), text,
              "only links and breaks are added");
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
