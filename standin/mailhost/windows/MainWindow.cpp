#include "standin/mailhost/windows/MainWindow.h"

#include "platform/runtime/Runtime.h"
#include "platform/toolkit/Windows.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/Messages.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QHBoxLayout>
#include <QLabel>
#include <QMenuBar>
#include <QMessageBox>
#include <QPushButton>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace mailhost {

namespace {

struct ToolItem {
    QString identifier;
    QString name;
    QString text;
    QString tip;
    void (MainWindowController::*operation)();
};

const QList<ToolItem> &toolItems() {
    using C = MainWindowController;
    static const QList<ToolItem> items{
        {u"NewAppointment"_qs, controls::newAppointmentButton, QObject::tr("New &appointment"),
         QObject::tr("New appointment (Ctrl+N)"), &C::newAppointment},
        {u"NewMeeting"_qs, controls::newMeetingButton, QObject::tr("New &meeting"),
         QObject::tr("New meeting (Ctrl+Shift+N)"), &C::newMeeting},
        {u"PreviousWeek"_qs, controls::previousWeekButton, QObject::tr("‹"),
         QObject::tr("Previous week (Ctrl+Left)"), &C::previousWeek},
        {u"Today"_qs, controls::todayButton, QObject::tr("&Today"), QObject::tr("Today (Ctrl+T)"),
         &C::goToToday},
        {u"NextWeek"_qs, controls::nextWeekButton, QObject::tr("›"), QObject::tr("Next week (Ctrl+Right)"),
         &C::nextWeek}};
    return items;
}

} // namespace

MainWindow::MainWindow(MainWindowController *controller)
    : m_controller(controller)
    , m_toolBar(addToolBar(tr("Tool-bar")))
    , m_title(new QLabel)
    , m_list(new WeekList) {
    setObjectName(controls::mainWindow);
    resize(960, 760);
    m_toolBar->setObjectName(controls::mainToolBar);
    m_toolBar->setMovable(false);
    m_title->setObjectName(controls::weekTitle);
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    m_title->setFont(font);
    m_title->setContentsMargins(14, 10, 14, 4);
    auto *centre = new QWidget;
    centre->setAutoFillBackground(true);
    centre->setBackgroundRole(QPalette::Base);
    auto *layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addWidget(m_list, 1);
    setCentralWidget(centre);
    buildMenus();
    connect(m_list, &WeekList::opened, this, [this] { m_controller->openSelected(); });
    m_list->setFocus();
}

QWidget *MainWindow::toolBarItem(const QString &identifier) {
    for (const ToolItem &item : toolItems()) {
        if (item.identifier != identifier)
            continue;
        if (auto *existing = findChild<QWidget *>(item.name))
            return existing;
        auto *button = new QToolButton(this);
        button->setObjectName(item.name);
        button->setText(item.text);
        button->setToolTip(item.tip);
        button->setAccessibleName(item.tip.section(u" ("_qs, 0, 0));
        button->setFocusPolicy(Qt::TabFocus);
        button->setAutoRaise(true);
        connect(button, &QToolButton::clicked, m_controller, item.operation);
        return button;
    }
    return nullptr;
}

void MainWindow::fillToolBar(const QStringList &identifiers) {
    for (const QString &identifier : identifiers) {
        if (identifier == u"NSToolbarFlexibleSpaceItem") {
            auto *space = new QWidget;
            space->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
            m_toolBar->addWidget(space);
            continue;
        }
        const rt::Value item =
            rt::send(m_controller,
                     "toolbar:itemForItemIdentifier:willBeInsertedIntoToolbar:", rt::fromWidget(m_toolBar),
                     identifier, true);
        if (QWidget *widget = rt::widgetValue(item))
            m_toolBar->addWidget(widget);
    }
}

QAction *MainWindow::addAction(QMenu *menu, const QString &name, const QString &text,
                               const QKeySequence &keys, void (MainWindowController::*operation)()) {
    QAction *action = menu->addAction(text);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, m_controller, operation);
    return action;
}

void MainWindow::buildMenus() {
    using C = MainWindowController;
    QMenu *file = menuBar()->addMenu(tr("&File"));
    addAction(file, u"newAppointmentAction"_qs, tr("New &appointment"), QKeySequence::New,
              &C::newAppointment);
    addAction(file, u"newMeetingAction"_qs, tr("New &meeting"), QKeySequence(tr("Ctrl+Shift+N")),
              &C::newMeeting);
    file->addSeparator();
    QAction *quit = file->addAction(tr("&Quit"), QKeySequence(tr("Ctrl+Q")), this, [this] { close(); });
    quit->setObjectName(controls::quitAction);
    QMenu *edit = menuBar()->addMenu(tr("&Edit"));
    addAction(edit, controls::openAction, tr("&Open"), QKeySequence(tr("Ctrl+O")), &C::openSelected);
    addAction(edit, controls::renameAction, tr("&Rename…"), QKeySequence(tr("F2")), &C::renameSelected);
    addAction(edit, controls::earlierAction, tr("Move &earlier"), QKeySequence(tr("Ctrl+Up")),
              &C::moveEarlier);
    addAction(edit, controls::laterAction, tr("Move &later"), QKeySequence(tr("Ctrl+Down")), &C::moveLater);
    addAction(edit, controls::longerAction, tr("Make lon&ger"), QKeySequence(tr("Ctrl+Shift+Down")),
              &C::makeLonger);
    addAction(edit, controls::shorterAction, tr("Make &shorter"), QKeySequence(tr("Ctrl+Shift+Up")),
              &C::makeShorter);
    edit->addSeparator();
    addAction(edit, controls::cancelMeetingAction, tr("&Cancel meeting…"),
              QKeySequence(tr("Ctrl+Shift+Delete")), &C::cancelSelected);
    addAction(edit, controls::deleteAction, tr("&Delete…"), QKeySequence::Delete, &C::deleteSelected);
    QMenu *view = menuBar()->addMenu(tr("&View"));
    addAction(view, u"todayAction"_qs, tr("&Today"), QKeySequence(tr("Ctrl+T")), &C::goToToday);
    addAction(view, u"previousWeekAction"_qs, tr("&Previous week"), QKeySequence(tr("Ctrl+Left")),
              &C::previousWeek);
    addAction(view, u"nextWeekAction"_qs, tr("&Next week"), QKeySequence(tr("Ctrl+Right")), &C::nextWeek);
}

void MainWindow::showTitle(const QString &week, const QString &file) {
    m_title->setText(week);
    setWindowTitle(file.isEmpty() ? QApplication::applicationDisplayName()
                                  : file + u" — "_qs + QApplication::applicationDisplayName());
}

void MainWindow::ask(const QString &question, const QString &detail, const QString &verb,
                     std::function<void()> yes) {
    if (m_question)
        m_question->deleteLater();
    m_question = makeMessage(this, controls::deleteQuestion, question, detail);
    QMessageBox *box = m_question;
    QPushButton *confirm = box->addButton(verb, QMessageBox::DestructiveRole);
    confirm->setObjectName(controls::deleteConfirmButton);
    QPushButton *keep = box->addButton(tr("&Keep"), QMessageBox::RejectRole);
    box->setEscapeButton(keep);
    platform::beginSheet(box, this, [box, confirm, yes = std::move(yes)](int) {
        if (box->clickedButton() == confirm)
            yes();
        box->deleteLater();
    });
}

void MainWindow::closeEvent(QCloseEvent *event) {
    if (!m_controller->closeEditors()) {
        event->ignore();
        return;
    }
    platform::windowWillClose(this);
    event->accept();
}

} // namespace mailhost
