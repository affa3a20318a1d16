#include "standin/mailhost/windows/MessageBoxes.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/windows/ControlNames.h"

#include <QApplication>
#include <QPushButton>

namespace mailhost {

QMessageBox *showMessage(QWidget *parent, const QString &text, const QString &detail,
                         const QList<MessageChoice> &choices) {
    auto *box = new QMessageBox(parent);
    box->setObjectName(controls::question);
    box->setIcon(QMessageBox::Question);
    box->setWindowTitle(QApplication::applicationDisplayName());
    box->setText(u"<b>"_s + text.toHtmlEscaped() + u"</b>"_s);
    box->setInformativeText(detail);
    for (const MessageChoice &choice : choices) {
        QPushButton *button = box->addButton(choice.text, choice.role);
        button->setObjectName(choice.name);
        if (choice.chosen) // after the message's own slot, which closes it
            QObject::connect(button, &QPushButton::clicked, box, choice.chosen);
        const bool accepts = choice.role == QMessageBox::AcceptRole;
        if (choice.role == QMessageBox::RejectRole)
            box->setEscapeButton(button);
        if (accepts || (choice.role == QMessageBox::RejectRole && !box->defaultButton()))
            box->setDefaultButton(button);
    }
    platform::beginSheet(box, parent, [box](int) { box->deleteLater(); });
    return box;
}

QMessageBox *showErrorMessage(QWidget *parent, const QString &message) {
    QMessageBox *box = showMessage(parent, {}, {}, {{{}, QObject::tr("OK"), QMessageBox::AcceptRole, {}}});
    box->setObjectName(controls::errorMessage);
    box->setIcon(QMessageBox::Warning);
    box->setTextFormat(Qt::PlainText);
    box->setText(message);
    return box;
}

} // namespace mailhost
