#include "standin/mailhost/windows/main/MainToolBar.h"

#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/main/MainToolBarIcons.h"

#include <QCoreApplication>
#include <utility>

namespace mailhost {

namespace {

struct Description {
    QString identifier;
    QString controlName;
    QString label;
    QString toolTip;
    MainToolBarIcon icon;
    std::function<void()> MainToolBarActions::*action;
};

QString tr(const char *text) {
    return QCoreApplication::translate("MainToolBar", text);
}

const QList<Description> &descriptions() {
    using A = MainToolBarActions;
    using I = MainToolBarIcon;
    static const auto *all = new QList<Description>{
        {u"NewAppointment"_s, controls::newAppointmentButton, tr("New &appointment"),
         tr("Make a new appointment (Ctrl+N)"), I::NewAppointment, &A::newAppointment},
        {u"NewMeeting"_s, controls::newMeetingButton, tr("New &meeting"),
         tr("Make a new meeting with attendees (Ctrl+Shift+N)"), I::NewMeeting, &A::newMeeting},
        {u"PreviousWeek"_s, controls::previousWeekButton, tr("Back"), tr("Go back (Ctrl+Left)"), I::Previous,
         &A::previous},
        {u"Today"_s, controls::todayButton, tr("&Today"), tr("Go to today (Ctrl+T)"), I::Today, &A::today},
        {u"NextWeek"_s, controls::nextWeekButton, tr("Forward"), tr("Go forward (Ctrl+Right)"), I::Next,
         &A::next},
        {u"Day"_s, controls::dayViewButton, tr("Day"), tr("Show one day (Ctrl+1)"), I::Day, &A::showDay},
        {u"Week"_s, controls::weekViewButton, tr("Week"), tr("Show a week (Ctrl+2)"), I::Week, &A::showWeek},
        {u"Delete"_s, controls::deleteToolBarButton, tr("Delete"),
         tr("Delete the selected appointment (Delete)"), I::Delete, &A::deleteSelected}};
    return *all;
}

class HostItem : public platform::ToolbarItem {
public:
    HostItem(const Description &description, const std::function<void()> &action,
             std::function<bool()> canRun)
        : platform::ToolbarItem(description.identifier)
        , m_canRun(std::move(canRun)) {
        setControlName(description.controlName);
        setLabel(description.label);
        setToolTip(description.toolTip);
        setImage(mainToolBarIcon(description.icon));
        if (action)
            setAction([action](platform::ToolbarItem &, QWidget *) { action(); });
        else
            m_canRun = [] { return false; };
        HostItem::validate();
    }

    void validate() override { setEnabled(!m_canRun || m_canRun()); }

private:
    std::function<bool()> m_canRun;
};

} // namespace

MainToolBarItems::MainToolBarItems(MainToolBarActions actions)
    : m_actions(std::move(actions)) {}

MainToolBarItems::~MainToolBarItems() = default;

platform::ToolbarItem *MainToolBarItems::item(const QString &identifier) {
    const auto made = m_items.find(identifier);
    if (made != m_items.end())
        return made->second.get();
    for (const Description &description : descriptions()) {
        if (description.identifier != identifier)
            continue;
        const bool deletes = description.action == &MainToolBarActions::deleteSelected;
        auto item = std::make_unique<HostItem>(description, m_actions.*description.action,
                                               deletes ? m_actions.canDelete : nullptr);
        return (m_items[identifier] = std::move(item)).get();
    }
    return nullptr;
}

QVariantList MainToolBarItems::defaultIdentifiers() {
    return {u"NewAppointment"_s,
            u"NewMeeting"_s,
            platform::toolbarSeparatorIdentifier,
            u"PreviousWeek"_s,
            u"Today"_s,
            u"NextWeek"_s,
            platform::toolbarSeparatorIdentifier,
            u"Day"_s,
            u"Week"_s,
            platform::toolbarFlexibleSpaceIdentifier,
            u"Delete"_s};
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
    return toolbar;
}

} // namespace mailhost
