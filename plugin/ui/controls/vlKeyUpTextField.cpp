#include "plugin/ui/controls/vlKeyUpTextField.h"

#include <QKeyEvent>

vlKeyUpTextField::vlKeyUpTextField(QWidget *parent)
    : QLineEdit(parent) {
    connect(this, &QLineEdit::textEdited, this, [this] { send(m_textChange); });
}

vlKeyUpTextField::~vlKeyUpTextField() {
    cleanUp();
}

void vlKeyUpTextField::setKeyup(QObject *target, Action action) {
    m_keyup = {target, std::move(action)};
}

void vlKeyUpTextField::setTextChange(QObject *target, Action action) {
    m_textChange = {target, std::move(action)};
}

void vlKeyUpTextField::cleanUp() {
    m_keyup = {};
    m_textChange = {};
}

void vlKeyUpTextField::keyReleaseEvent(QKeyEvent *event) {
    QLineEdit::keyReleaseEvent(event);
    send(m_keyup);
}

void vlKeyUpTextField::send(const TargetAction &pair) {
    const TargetAction copy = pair; // the action may set another one
    if (copy.target && copy.action)
        copy.action(this);
}
