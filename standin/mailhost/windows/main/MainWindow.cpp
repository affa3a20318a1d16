#include "standin/mailhost/windows/main/MainWindow.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/MessageBoxes.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QLabel>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

namespace mailhost {

MainWindow::MainWindow()
    : m_toolBar(makeMainToolBar(this))
    , m_title(new QLabel)
    , m_calendar(new CalendarGrid) {
    setObjectName(controls::mainWindow);
    resize(1080, 780);
    addToolBar(m_toolBar);
    m_title->setObjectName(controls::weekTitle);
    QFont font = m_title->font();
    font.setPointSizeF(font.pointSizeF() * 1.6);
    m_title->setFont(font);
    m_title->setContentsMargins(14, 10, 14, 6);
    m_calendar->setObjectName(controls::calendarGrid);
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

QAction *MainWindow::command(const QString &name) const {
    return findChild<QAction *>(name);
}

void MainWindow::showTitle(const QString &days, const QString &file) {
    m_title->setText(days);
    setWindowTitle(file.isEmpty() ? QApplication::applicationDisplayName()
                                  : file + u" — "_s + QApplication::applicationDisplayName());
}

void MainWindow::ask(const QString &question, const QString &detail, const QList<Choice> &choices) {
    if (m_question)
        m_question->deleteLater();
    m_question = makeMessage(this, controls::deleteQuestion, question, detail);
    QMessageBox *box = m_question;
    QList<std::pair<QAbstractButton *, std::function<void()>>> answers;
    for (const Choice &choice : choices) {
        QPushButton *button = box->addButton(choice.text, QMessageBox::DestructiveRole);
        button->setObjectName(choice.name);
        answers.append({button, choice.chosen});
    }
    QPushButton *keep = box->addButton(tr("&Keep"), QMessageBox::RejectRole);
    box->setEscapeButton(keep);
    box->setDefaultButton(keep);
    platform::beginSheet(box, this, [box, answers](int) {
        const QAbstractButton *clicked = box->clickedButton();
        box->deleteLater();
        for (const auto &[button, chosen] : answers)
            if (button == clicked && chosen)
                chosen();
    });
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
