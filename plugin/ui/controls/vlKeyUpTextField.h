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
    ~vlKeyUpTextField() override;

    // The action is called as long as the target lives; neither is owned. No target: nothing is called.
    void setKeyup(QObject *target, Action action);      // after the field has handled the release of a key
    void setTextChange(QObject *target, Action action); // after each change by the user
    void cleanUp();                                     // forgets both

protected:
    void keyReleaseEvent(QKeyEvent *event) override;

private:
    void send(const QPointer<QObject> &target, Action action);

    QPointer<QObject> keyupTarget;
    Action keyupAction;
    QPointer<QObject> textChangeTarget;
    Action textChangeAction;
};
