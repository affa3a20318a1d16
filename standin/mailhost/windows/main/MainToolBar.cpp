#include "standin/mailhost/windows/main/MainToolBar.h"

#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/LineDrawing.h"

#include <QAction>
#include <QCoreApplication>
#include <algorithm>

namespace mailhost {

namespace {

struct Description {
    QString identifier; // also the name of the drawing
    QString command;
    QString label;
    QString toolTip;
    QString before = {}; // the item before it by default
};

QString tr(const char *text) {
    return QCoreApplication::translate("MainToolBar", text);
}

const QList<Description> &descriptions() {
    namespace c = controls;
    static const auto *all = new QList<Description>{
        {u"NewAppointment"_s, c::newAppointmentAction, tr("New &appointment"),
         tr("Make a new appointment (Ctrl+N)")},
        {u"NewMeeting"_s, c::newMeetingAction, tr("New &meeting"),
         tr("Make a new meeting with attendees (Ctrl+Shift+N)")},
        {u"PreviousWeek"_s, c::previousAction, tr("Back"), tr("Go back (Ctrl+Left)"),
         platform::toolbarSeparatorIdentifier},
        {u"Today"_s, c::todayAction, tr("&Today"), tr("Go to today (Ctrl+T)")},
        {u"NextWeek"_s, c::nextAction, tr("Forward"), tr("Go forward (Ctrl+Right)")},
        {u"Day"_s, c::dayViewAction, tr("Day"), tr("Show one day (Ctrl+1)"),
         platform::toolbarSeparatorIdentifier},
        {u"Week"_s, c::weekViewAction, tr("Week"), tr("Show a week (Ctrl+2)")},
        {u"Delete"_s, c::deleteAction, tr("Delete"), tr("Delete the selected appointment (Delete)"),
         platform::toolbarFlexibleSpaceIdentifier}};
    return *all;
}

} // namespace

std::unique_ptr<platform::ToolbarItem> makeToolBarItem(const QString &identifier, const QWidget *window) {
    const auto description =
        std::find_if(descriptions().begin(), descriptions().end(),
                     [&identifier](const Description &one) { return one.identifier == identifier; });
    if (description == descriptions().end())
        return nullptr;
    auto item = std::make_unique<platform::ToolbarItem>(identifier);
    item->setLabel(description->label);
    item->setToolTip(description->toolTip);
    item->setImage(lineDrawingIcon(identifier));
    auto *command = window->findChild<QAction *>(description->command);
    item->setEnabled(command->isEnabled());
    QObject::connect(command, &QAction::enabledChanged, item.get(), &platform::ToolbarItem::setEnabled);
    item->setAction([command = QPointer(command)](platform::ToolbarItem &, QWidget *) {
        if (command)
            command->trigger();
    });
    return item;
}

QVariantList defaultToolBarIdentifiers() {
    QVariantList identifiers;
    for (const Description &description : descriptions()) {
        if (!description.before.isEmpty())
            identifiers.append(description.before);
        identifiers.append(description.identifier);
    }
    return identifiers;
}

QVariantList allowedToolBarIdentifiers() {
    QVariantList identifiers;
    for (const Description &description : descriptions())
        identifiers.append(description.identifier);
    return identifiers << platform::toolbarSeparatorIdentifier << platform::toolbarFixedSpaceIdentifier
                       << platform::toolbarFlexibleSpaceIdentifier;
}

} // namespace mailhost
