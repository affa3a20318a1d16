// Replacements of the host methods of an editor's header and of those that open its window.
#include "platform/Guarded.h"
#include "platform/services/Services.h"
#include "platform/toolkit/Frames.h"
#include "platform/toolkit/Windows.h"
#include "plugin/hooks/hookReplacements.h"
#include "plugin/hooks/hookTable.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/workflow/vlApptUIActionMgr.h"

#include <QVarLengthArray>
#include <QWidget>

namespace hooks {

namespace {

constexpr double yWithTimeZoneRow = 13.0;
constexpr double yWithoutTimeZoneRow = -10.0;

const QString timeZoneLabel = u"Time zone:"_s;
const QString keySubview = u"subview"_s;

const QString olderHeaderName = u"OLCalendarHeaderContainerView"_s;
const QString newerHeaderName = u"OLAutoLayoutAttachmentsAcceptingView"_s;
const QString autoLayoutName = u"OLAutoLayoutView"_s;

// True for the class itself, false for a subclass.
bool isExactly(const rt::Object *object, const QString &className) {
    return object && object->isa()->name() == className;
}

bool isShown(const QWidget *view) {
    for (; view && !view->isWindow(); view = view->parentWidget())
        if (view->isHidden())
            return false;
    return true;
}

// A view that is not a text field has a null text, which differs from the label's text.
bool isTimeZoneLabel(const QWidget *view) {
    return platform::textFieldValue(view) == timeZoneLabel;
}

// Iterates over the direct subviews without making a list of them.
template<typename Accept>
const QWidget *firstSubview(const QWidget *view, Accept accept) {
    for (const QObject *child : view->children())
        if (child->isWidgetType())
            if (const auto *subview = static_cast<const QWidget *>(child); accept(subview))
                return subview;
    return nullptr;
}

// Whether the first label with that text, two levels down in a row of the given kind, is visible.
template<typename IsRow>
bool hasTimeZoneRow(const QWidget *header, IsRow isRow) {
    const QWidget *label = nullptr;
    firstSubview(header, [&label, isRow](const QWidget *row) {
        label = isRow(row) ? firstSubview(row, isTimeZoneLabel) : nullptr;
        return label != nullptr;
    });
    return label && isShown(label);
}

bool vlHasTimezoneForHeaderContainer(const QWidget *header) {
    return hasTimeZoneRow(header, [](const QWidget *) { return true; });
}

bool vlHasTimezone(const QWidget *header) {
    const rt::Class *rowClass = rt::classNamed(autoLayoutName);
    return hasTimeZoneRow(header, [rowClass](const QWidget *view) {
        return rt::isKindOf(dynamic_cast<const rt::Object *>(view), rowClass);
    });
}

void placeStrip(QWidget *strip, double y) {
    const QWidget *header = strip->parentWidget();
    const QRectF headerFrame = header ? platform::bottomLeftFrame(header) : QRectF();
    const double right = headerFrame.x() + headerFrame.width() - g_vlActionAdditionView_RightMargin;
    const double x = qMax(right - g_vlActionAddtionView_NormalWidth, g_vlActionAdditionView_MinX);
    platform::setBottomLeftFrame(strip, QRectF(x, y, right - x, strip->height()));
}

// A copy of the strips found, made before the first one is moved: moving a view runs foreign code.
using Strips = QVarLengthArray<vlActionAdditionView *, 2>;

void placeStrips(const Strips &strips, bool timeZoneRow) {
    for (vlActionAdditionView *strip : strips)
        placeStrip(strip, timeZoneRow ? yWithTimeZoneRow : yWithoutTimeZoneRow);
}

Strips managedStrips(rt::Object *header) {
    static const rt::Selector managedSubviewsData("managedSubviewsData");
    Strips strips;
    for (const rt::Value &entry : rt::listValue(rt::send(header, managedSubviewsData)))
        if (auto *strip =
                qobject_cast<vlActionAdditionView *>(rt::widgetValue(rt::mapValue(entry).value(keySubview))))
            strips.append(strip);
    return strips;
}

Strips directStrips(rt::Object *object) {
    Strips strips;
    if (const auto *header = dynamic_cast<const QWidget *>(object))
        for (QObject *child : header->children())
            if (auto *strip = qobject_cast<vlActionAdditionView *>(child))
                strips.append(strip);
    return strips;
}

rt::Value makeHeader(HookRowName row, const QString &headerClass, rt::Object *self, rt::Args arguments) {
    rt::Value made = callHost(row, self, arguments);
    platform::guarded("making the meeting buttons", [&made, &headerClass] {
        rt::Object *object = rt::objectValue(made);
        QWidget *header = rt::widgetValue(made);
        if (header && isExactly(object, headerClass))
            vlApptUIActionMgr::sharedInstance().createVlAdditionViewOnCalHeaderContainerView(header);
    });
    return made;
}

// Finds the strips and the time-zone row in one kind of header.
struct HeaderParts {
    Strips (*strips)(rt::Object *header);
    bool (*hasTimeZone)(const QWidget *header);
};

rt::Value drawHeader(HookRowName row, const QString &headerClass, const HeaderParts &parts, rt::Object *self,
                     rt::Args arguments) {
    const rt::Weak<> view(self);
    rt::Value drawn = callHost(row, self, arguments);
    platform::guarded("placing the meeting buttons", [&view, &headerClass, &parts] {
        if (!isExactly(view.get(), headerClass))
            return;
        const Strips strips = parts.strips(view.get());
        const auto *header = dynamic_cast<const QWidget *>(view.get());
        if (header && !strips.isEmpty()) // without a strip nothing is looked for at each drawing
            placeStrips(strips, parts.hasTimeZone(header));
    });
    return drawn;
}

} // namespace

rt::Value olderHeaderInit(rt::Object *self, rt::Selector, rt::Args arguments) {
    return makeHeader(HookRowName::OlderHeaderInit, olderHeaderName, self, arguments);
}

rt::Value newerHeaderInit(rt::Object *self, rt::Selector, rt::Args arguments) {
    return makeHeader(HookRowName::NewerHeaderInit, newerHeaderName, self, arguments);
}

rt::Value olderHeaderDrawRect(rt::Object *self, rt::Selector, rt::Args arguments) {
    return drawHeader(HookRowName::OlderHeaderDraw, olderHeaderName,
                      {managedStrips, vlHasTimezoneForHeaderContainer}, self, arguments);
}

rt::Value newerHeaderDrawRect(rt::Object *self, rt::Selector, rt::Args arguments) {
    return drawHeader(HookRowName::NewerHeaderDraw, newerHeaderName, {directStrips, vlHasTimezone}, self,
                      arguments);
}

// Replaces the drawing of the newer header's rows, which would paint over the strip.
rt::Value headerRowDrawRect(rt::Object *, rt::Selector, rt::Args) {
    return true;
}

rt::Value editorShownRow(HookRowName row, rt::Object *self, rt::Args arguments) {
    // The appointment may be deleted while the host opens its window, and the window may close again before
    // the next turn of the loop.
    const rt::Weak<> event(rt::objectValue(arguments[0]));
    rt::Value shown = callHost(row, self, arguments);
    platform::guarded("telling the meeting buttons about their editor", [&shown, &event] {
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
