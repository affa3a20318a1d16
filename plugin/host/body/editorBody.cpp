#include "plugin/host/body/editorBody.h"

#include "platform/runtime/Runtime.h"
#include "plugin/host/adapters/hostNames.h"
#include "plugin/host/adapters/vlERCalendarEventEditorViewController.h"
#include "plugin/host/adapters/vlOLWordMailEditor.h"
#include "plugin/host/adapters/vlOLWordMailEditorContent.h"
#include "plugin/host/body/bodyPorts.h"
#include "plugin/host/body/vlBodyHelper.h"
#include "plugin/host/body/vlEmailBodyMgr.h"
#include "plugin/link/meetingKeys.h"
#include "plugin/util/localizedString.h"
#include "plugin/util/vlOLUtils.h"

#include <QWidget>
#include <utility>

namespace {

const QString bodyTag = u"body"_s;
const QString reminderKey = u"AddVelaMeetingReminderMsg"_s;
constexpr qsizetype emptyBodyLength = 1;

rt::Object *sendForObject(rt::Object *object, const QString &member) {
    return rt::objectValue(rt::send(object, rt::Selector(member)));
}

rt::Object *firstElement(rt::Object *document, const QString &tagName) {
    const QVariantList elements =
        rt::listValue(rt::send(document, rt::Selector(olItem_getElementsByTagName), tagName));
    return elements.isEmpty() ? nullptr : rt::objectValue(elements.first());
}

QString outerHtml(rt::Object *document) {
    return rt::textValue(
        rt::send(sendForObject(document, olItem_documentElement), rt::Selector(olItem_outerHTML)));
}

} // namespace

rt::Object *vlGetDOMDocumentInEventEditorUI(QWidget *window) {
    QList<QWidget *> views;
    vlOLUtils::GetSubViewOfKind(window, key_vlComposeView, views);
    if (views.isEmpty())
        return nullptr;
    return sendForObject(sendForObject(rt::objectValue(rt::fromWidget(views.first())), olItem_mainFrame),
                         olItem_DOMDocument);
}

rt::Object *vlGetHTMLElementByTagName(QWidget *window, const QString &tagName) {
    return firstElement(vlGetDOMDocumentInEventEditorUI(window), tagName);
}

rt::Object *vlGetEmailBodyElementInEventEditorUI(QWidget *window) {
    return vlGetHTMLElementByTagName(window, bodyTag);
}

rt::Object *vlERCalendarEventEditorViewController::webDocument() const {
    const QWidget *editorView = view();
    return editorView ? vlGetDOMDocumentInEventEditorUI(editorView->window()) : nullptr;
}

void vlERCalendarEventEditorViewController::updateEmailBodyWithVelaContent(const QString &invitation,
                                                                           bool isHTML) const {
    if (!isValidConnection())
        return;
    if (rt::Object *document = webDocument()) {
        const vlBodyHelper &helper = vlBodyHelper::sharedInstance();
        QString old = outerHtml(document);
        const QString html =
            invitation.isEmpty()
                ? helper.removeVlBodyForDelete(std::move(old))
                : helper.updateVlBodyWithSrcBody(std::move(old), invitation, isHTML, olmUCCapabilities());
        if (!html.isNull())
            updateEmailBody(html);
        return;
    }
    writeNewBody(
        vlEmailBodyMgr::sharedInstance().getMailBodyContentWithVela(bodyContent(), invitation, isHTML));
}

void vlERCalendarEventEditorViewController::writeNewBody(const QString &html) const {
    BodyEditorHolder *holder = BodyPorts::instance().holder;
    if (!holder || html.isNull())
        return;
    holder->setOLNewBody(html);
    displayEmailContent(html);
}

void vlERCalendarEventEditorViewController::updateEmailBodyForPAC(const QString &text, bool isHTML) const {
    if (!isValidConnection() || text.isEmpty())
        return;
    rt::Object *document = webDocument();
    QString old = document ? outerHtml(document) : bodyContent();
    const QString html = vlBodyHelper::sharedInstance().updateBodyForPAC(std::move(old), text, isHTML);
    if (!document)
        return writeNewBody(html);
    if (!html.isNull())
        updateEmailBody(html);
}

void vlERCalendarEventEditorViewController::updateEmailBody(const QString &html) const {
    rt::send(firstElement(webDocument(), bodyTag), rt::Selector(olItem_setInnerHTML), html);
}

void vlERCalendarEventEditorViewController::displayEmailContent(const QString &html) const {
    constexpr bool readOnly = false;
    const BodyEditorHolder *holder = BodyPorts::instance().holder;
    if (const vlOLWordMailEditor *editor = holder ? holder->bodyEditorOf(delegate()) : nullptr)
        editor->displayHTMLContent(html, readOnly);
}

QString vlERCalendarEventEditorViewController::bodyContent() const {
    const BodyEditorHolder *holder = BodyPorts::instance().holder;
    const vlOLWordMailEditor *editor = holder ? holder->bodyEditorOf(delegate()) : nullptr;
    return editor ? vlOLWordMailEditorContent(editor->editorContent()).bodyContent() : QString();
}

bool vlERCalendarEventEditorViewController::isBodyContentEmpty(const QString &html) {
    const QString text = vlBodyHelper::sharedInstance().convertHTMLToPlainText(html);
    return vlOLUtils::trimAllSpaceAndNewLine(text).isEmpty();
}

bool vlERCalendarEventEditorViewController::isCurrentEmailBodyEmpty() const {
    return isBodyContentEmpty(rt::textValue(getVlMeetingData().value(vl_ApptInfo_Body)));
}

void vlERCalendarEventEditorViewController::addVlReminderInEmailBody(const QString &html) const {
    const QString text = vlBodyHelper::sharedInstance().convertHTMLToPlainText(html);
    if (text.size() != emptyBodyLength)
        return;
    const QString reminder = vlLocalizedString(reminderKey);
    if (!reminder.isEmpty())
        updateEmailBody(reminder);
}
