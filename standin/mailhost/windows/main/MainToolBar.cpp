#include "standin/mailhost/windows/main/MainToolBar.h"

#include "platform/toolkit/ToolbarCustomization.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/LineDrawing.h"

#include <QAction>
#include <QCoreApplication>

namespace mailhost {

namespace {

struct Description {
    QString identifier; // also the name of the drawing
    QString controlName;
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
        {u"NewAppointment"_s, c::newAppointmentButton, c::newAppointmentAction, tr("New &appointment"),
         tr("Make a new appointment (Ctrl+N)")},
        {u"NewMeeting"_s, c::newMeetingButton, c::newMeetingAction, tr("New &meeting"),
         tr("Make a new meeting with attendees (Ctrl+Shift+N)")},
        {u"PreviousWeek"_s, c::previousWeekButton, c::previousAction, tr("Back"), tr("Go back (Ctrl+Left)"),
         platform::toolbarSeparatorIdentifier},
        {u"Today"_s, c::todayButton, c::todayAction, tr("&Today"), tr("Go to today (Ctrl+T)")},
        {u"NextWeek"_s, c::nextWeekButton, c::nextAction, tr("Forward"), tr("Go forward (Ctrl+Right)")},
        {u"Day"_s, c::dayViewButton, c::dayViewAction, tr("Day"), tr("Show one day (Ctrl+1)"),
         platform::toolbarSeparatorIdentifier},
        {u"Week"_s, c::weekViewButton, c::weekViewAction, tr("Week"), tr("Show a week (Ctrl+2)")},
        {u"Delete"_s, c::deleteToolBarButton, c::deleteAction, tr("Delete"),
         tr("Delete the selected appointment (Delete)"), platform::toolbarFlexibleSpaceIdentifier}};
    return *all;
}

class HostItem : public platform::ToolbarItem {
public:
    HostItem(const Description &description, QAction *command)
        : platform::ToolbarItem(description.identifier)
        , m_command(command) {
        setControlName(description.controlName);
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

platform::ToolbarItem *MainToolBarItems::item(const QString &identifier) {
    std::unique_ptr<platform::ToolbarItem> &made = m_items[identifier];
    for (const Description &description : descriptions())
        if (!made && description.identifier == identifier)
            made =
                std::make_unique<HostItem>(description, m_window->findChild<QAction *>(description.command));
    return made.get();
}

QVariantList MainToolBarItems::defaultIdentifiers() {
    QVariantList identifiers;
    for (const Description &description : descriptions()) {
        if (!description.before.isEmpty())
            identifiers.append(description.before);
        identifiers.append(description.identifier);
    }
    return identifiers;
}

QVariantList MainToolBarItems::allowedIdentifiers() {
    QVariantList identifiers;
    for (const Description &description : descriptions())
        identifiers.append(description.identifier);
    identifiers << platform::toolbarSeparatorIdentifier << platform::toolbarFixedSpaceIdentifier
                << platform::toolbarFlexibleSpaceIdentifier;
    return identifiers;
}

platform::Toolbar *makeMainToolBar(QWidget *window) {
    auto *toolbar = new platform::Toolbar(u"MainWindow"_s, window);
    toolbar->setObjectName(controls::mainToolBar);
    toolbar->setWindowTitle(tr("Tool-bar"));
    QObject::connect(toolbar, &platform::Toolbar::customizationRequested, toolbar,
                     [toolbar] { platform::customizeToolbar(toolbar); });
    return toolbar;
}

} // namespace mailhost
