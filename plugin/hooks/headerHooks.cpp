#include "platform/services/Services.h"
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Windows.h"
#include "plugin/hooks/hookGuard.h"
#include "plugin/hooks/hookReplacements.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/workflow/vlApptUIActionMgr.h"

#include <QWidget>

namespace hooks {

namespace {

constexpr int rowOlderDraw = 1;
constexpr int rowNewerInit = 2;
constexpr int rowNewerDraw = 3;
constexpr int rowOlderInit = 13;

constexpr double yWithTimeZoneRow = 13.0;
constexpr double yWithoutTimeZoneRow = -10.0;

const QString olderHeaderClass = QStringLiteral("OLCalendarHeaderContainerView");
const QString newerHeaderClass = QStringLiteral("OLAutoLayoutAttachmentsAcceptingView");
const QString autoLayoutClass = QStringLiteral("OLAutoLayoutView");
const QString viewClass = QStringLiteral("NSView");
const QString textFieldClass = QStringLiteral("NSTextField");
const QString stripClass = QStringLiteral("vlActionAdditionView");
const QString timeZoneLabel = QStringLiteral("Time zone:");
const QString keySubview = QStringLiteral("subview");

// The very class, not a subclass of it.
bool isExactly(const rt::Object *object, const QString &className) {
    const rt::Class *cls = rt::classNamed(className);
    return object && cls && object->isa() == cls;
}

QList<QWidget *> directSubviews(const QWidget *view) {
    return view->findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
}

bool isShown(const QWidget *view) {
    for (; view && !view->isWindow(); view = view->parentWidget())
        if (view->isHidden())
            return false;
    return true;
}

// Whether the header shows its time-zone row: decided by the first label with that text, two levels down.
bool hasTimeZoneRow(const QWidget *header, const QString &rowClass) {
    for (const QWidget *row : directSubviews(header)) {
        if (!platform::isViewOfKind(row, rowClass))
            continue;
        for (const QWidget *field : directSubviews(row))
            if (platform::isViewOfKind(field, textFieldClass) &&
                platform::textFieldValue(field) == timeZoneLabel)
                return isShown(field);
    }
    return false;
}

void placeStrip(QWidget *strip, double y) {
    const QWidget *header = strip->parentWidget();
    const QRectF headerFrame = header ? platform::bottomLeftFrame(header) : QRectF();
    const double right = headerFrame.x() + headerFrame.width();
    double x = right - g_vlActionAddtionView_NormalWidth - g_vlActionAdditionView_RightMargin;
    double width = g_vlActionAddtionView_NormalWidth;
    if (x < g_vlActionAdditionView_MinX) {
        x = g_vlActionAdditionView_MinX;
        width = right - g_vlActionAdditionView_MinX - g_vlActionAdditionView_RightMargin;
    }
    platform::setBottomLeftFrame(strip, QRectF(x, y, width, strip->height()));
}

void placeStrips(const QList<QWidget *> &candidates, bool timeZoneRow) {
    for (QWidget *candidate : candidates)
        if (platform::isViewOfKind(candidate, stripClass))
            placeStrip(candidate, timeZoneRow ? yWithTimeZoneRow : yWithoutTimeZoneRow);
}

rt::Value makeHeader(int row, const QString &className, rt::Object *self, rt::Args arguments) {
    const rt::Value made = callHost(row, self, arguments);
    guarded("making the meeting buttons", [&made, &className] {
        rt::Object *object = rt::objectValue(made);
        QWidget *header = rt::widgetValue(made);
        if (header && isExactly(object, className))
            vlApptUIActionMgr::sharedInstance().createVlAdditionViewOnCalHeaderContainerView(header);
    });
    return made;
}

} // namespace

rt::Value olderHeaderInit(rt::Object *self, rt::Selector, rt::Args arguments) {
    return makeHeader(rowOlderInit, olderHeaderClass, self, arguments);
}

rt::Value newerHeaderInit(rt::Object *self, rt::Selector, rt::Args arguments) {
    return makeHeader(rowNewerInit, newerHeaderClass, self, arguments);
}

rt::Value olderHeaderDrawRect(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Value drawn = callHost(rowOlderDraw, self, arguments);
    guarded("placing the meeting buttons", [self] {
        const auto *header = dynamic_cast<QWidget *>(self);
        if (!header || !isExactly(self, olderHeaderClass))
            return;
        QList<QWidget *> candidates;
        for (const rt::Value &entry : rt::listValue(rt::send(self, "managedSubviewsData")))
            if (QWidget *view = rt::widgetValue(rt::mapValue(entry).value(keySubview)))
                candidates.append(view);
        placeStrips(candidates, hasTimeZoneRow(header, viewClass));
    });
    return drawn;
}

rt::Value newerHeaderDrawRect(rt::Object *self, rt::Selector, rt::Args arguments) {
    const rt::Value drawn = callHost(rowNewerDraw, self, arguments);
    guarded("placing the meeting buttons", [self] {
        const auto *header = dynamic_cast<QWidget *>(self);
        if (header && isExactly(self, newerHeaderClass))
            placeStrips(directSubviews(header), hasTimeZoneRow(header, autoLayoutClass));
    });
    return drawn;
}

// The rows of the newer header would paint over the strip: their own drawing never runs.
rt::Value headerRowDrawRect(rt::Object *, rt::Selector, rt::Args) {
    return true;
}

rt::Value editorShownRow(int row, rt::Object *self, rt::Args arguments) {
    const rt::Value shown = callHost(row, self, arguments);
    guarded("telling the meeting buttons about their editor", [&shown, &arguments] {
        // The window may be closed again before the next turn of the loop.
        const rt::Weak<> event(rt::objectValue(arguments[0]));
        const rt::Weak<> controller(rt::objectValue(shown));
        platform::services().runLoop->callAfter(0, [event, controller] {
            QVariantMap notice;
            if (event) {
                notice.insert(keyECCalendarEvent, rt::fromObject(event.get()));
                if (controller)
                    notice.insert(keyERCalendarEventEditorWindowController, rt::fromObject(controller.get()));
            }
            vlActionAdditionView::onChangeUINotification(notice);
        });
    });
    return shown;
}

} // namespace hooks
