// Questions and messages to the user.
#pragma once

#include <QList>
#include <QMessageBox>
#include <functional>

namespace mailhost {

// A button of a message: its object name, its text, and what it leads to; `chosen` may be empty.
struct MessageChoice {
    QString name;
    QString text;
    QMessageBox::ButtonRole role = QMessageBox::DestructiveRole;
    std::function<void()> chosen;
};

// Shows a question; modal for the parent, which may be nullptr, without blocking. Return chooses what
// accepts, else what rejects; Escape what rejects.
QMessageBox *showMessage(QWidget *parent, const QString &text, const QString &detail,
                         const QList<MessageChoice> &choices);
// One that can only be confirmed.
QMessageBox *showErrorMessage(QWidget *parent, const QString &message);

} // namespace mailhost
