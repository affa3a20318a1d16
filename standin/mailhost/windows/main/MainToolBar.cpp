#include "standin/mailhost/windows/main/MainToolBar.h"

#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/LineDrawing.h"

#include <QAction>
#include <QCoreApplication>

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

class HostItem : public platform::ToolbarItem {
public:
    HostItem(const Description &description, QAction *command)
        : platform::ToolbarItem(description.identifier)
        , m_command(command) {
        setLabel(description.label);
        setToolTip(description.toolTip);
        setImage(lineDrawingIcon(description.identifier));
        setAction([this](platform::ToolbarItem &, QWidget *) {
            if (m_command)
                m_command->trigger();
        });
        HostItem::validate();
    }

    void validate() override { setEnabled(m_command && m_command->isEnabled()); }

private:
    QPointer<QAction> m_command;
};

} // namespace

std::unique_ptr<platform::ToolbarItem> makeToolBarItem(const QString &identifier, const QWidget *window) {
    for (const Description &description : descriptions())
        if (description.identifier == identifier)
            return std::make_unique<HostItem>(description, window->findChild<QAction *>(description.command));
    return nullptr;
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
