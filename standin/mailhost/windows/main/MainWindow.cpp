#include "standin/mailhost/windows/main/MainWindow.h"

#include "platform/toolkit/ToolbarCustomization.h"
#include "platform/toolkit/Windows.h"
#include "standin/mailhost/windows/ControlNames.h"

#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QVBoxLayout>

namespace mailhost {

MainWindow::MainWindow()
    : m_toolBar(new platform::Toolbar(u"MainWindow"_s, this))
    , m_title(new QLabel)
    , m_calendar(new CalendarGrid) {
    setObjectName(controls::mainWindow);
    resize(1080, 780);
    m_toolBar->setWindowTitle(tr("Tool-bar"));
    connect(m_toolBar, &platform::Toolbar::customizationRequested, this,
            [this] { platform::customizeToolbar(m_toolBar); });
    addToolBar(m_toolBar);
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    m_title->setFont(font);
    m_title->setContentsMargins(14, 10, 14, 6);
    auto *centre = new QWidget;
    centre->setAutoFillBackground(true);
    centre->setBackgroundRole(QPalette::Base);
    auto *layout = new QVBoxLayout(centre);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_title);
    layout->addWidget(m_calendar, 1);
    setCentralWidget(centre);
    m_calendar->setFocus();
}

QAction *MainWindow::addCommand(QMenu *menu, const QString &name, const QString &text,
                                const QKeySequence &keys, std::function<void()> operation) {
    QAction *action = menu->addAction(text);
    action->setObjectName(name);
    action->setShortcut(keys);
    connect(action, &QAction::triggered, this, std::move(operation));
    return action;
}

void MainWindow::showTitle(const QString &days, const QString &file) {
    m_title->setText(days);
    setWindowTitle(file.isEmpty() ? QApplication::applicationDisplayName()
                                  : file + u" — "_s + QApplication::applicationDisplayName());
}

void MainWindow::closeEvent(QCloseEvent *event) {
    event->accept();
    if (m_closed)
        return;
    m_closed = true;
    platform::windowWillClose(this);
    Q_EMIT closed();
}

} // namespace mailhost
