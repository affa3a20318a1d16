// A text field that reports key releases and the user's changes.
#pragma once

#include <QLineEdit>
#include <QPointer>
#include <functional>

class vlKeyUpTextField : public QLineEdit {
    Q_OBJECT
public:
    using Action = std::function<void(vlKeyUpTextField *field)>;

    explicit vlKeyUpTextField(QWidget *parent = nullptr);

    // The field calls the action while the target exists and does not own the target. Without a target it
    // calls nothing.
    void setKeyup(QObject *target, Action action);      // called after the field has handled a key release
    void setTextChange(QObject *target, Action action); // called after each change by the user
    void cleanUp();                                     // removes both actions

protected:
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    void send(const QPointer<QObject> &target, Action action);

    QPointer<QObject> keyupTarget;
    Action keyupAction;
    QPointer<QObject> textChangeTarget;
    Action textChangeAction;
};
