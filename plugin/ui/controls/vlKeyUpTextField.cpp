#include "plugin/ui/controls/vlKeyUpTextField.h"

#include <QKeyEvent>
#include <utility>

vlKeyUpTextField::vlKeyUpTextField(QWidget *parent)
    : QLineEdit(parent) {
    connect(this, &QLineEdit::textEdited, this, [this] { send(textChangeTarget, textChangeAction); });
}

void vlKeyUpTextField::setKeyup(QObject *target, Action action) {
    keyupTarget = target;
    keyupAction = std::move(action);
}

void vlKeyUpTextField::setTextChange(QObject *target, Action action) {
    textChangeTarget = target;
    textChangeAction = std::move(action);
}

void vlKeyUpTextField::cleanUp() {
    setKeyup(nullptr, nullptr);
    setTextChange(nullptr, nullptr);
}

void vlKeyUpTextField::keyReleaseEvent(QKeyEvent *event) {
    QLineEdit::keyReleaseEvent(event);
    send(keyupTarget, keyupAction);
}

// Takes a copy of the action, because the action may replace itself.
void vlKeyUpTextField::send(const QPointer<QObject> &target, Action action) {
    if (target && action)
        std::exchange(action, nullptr)(this);
}
