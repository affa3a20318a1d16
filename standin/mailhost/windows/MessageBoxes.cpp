#include "standin/mailhost/windows/MessageBoxes.h"

#include "platform/toolkit/Windows.h"
#include "standin/mailhost/model/Bind.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/editor/EditorViewController.h"

#include <QApplication>

namespace mailhost {

namespace {

class EventViewResponder : public rt::Object {
public:
    explicit EventViewResponder(EditorViewController *controller)
        : rt::Object(rt::classNamed(u"OLCalendarEventViewResponder"_s))
        , m_controller(controller) {}
    void switchToRecurringSeries(const rt::Value &) {
        if (m_controller)
            m_controller.get()->switchToSeries();
    }

private:
    rt::Weak<EditorViewController> m_controller;
};

} // namespace

QMessageBox *makeMessage(QWidget *parent, const QString &name, const QString &text, const QString &detail) {
    auto *box = new QMessageBox(parent);
    box->setObjectName(name);
    box->setIcon(QMessageBox::Question);
    box->setWindowTitle(QApplication::applicationDisplayName());
    box->setText(u"<b>"_s + text.toHtmlEscaped() + u"</b>"_s);
    box->setInformativeText(detail);
    return box;
}

void showErrorMessage(QWidget *parent, const QString &message) {
    QMessageBox *box =
        makeMessage(parent, controls::errorMessage, QObject::tr("That did not work."), message);
    box->setIcon(QMessageBox::Warning);
    box->addButton(QObject::tr("OK"), QMessageBox::AcceptRole);
    platform::beginSheet(box, parent, [box](int) { box->deleteLater(); });
}

std::unique_ptr<rt::Object> makeSeriesResponder(EditorViewController *controller) {
    return std::make_unique<EventViewResponder>(controller);
}

void defineResponderClass() {
    addMethods(rt::defineClass(u"OLCalendarEventViewResponder"_s),
               {{"switchToRecurringSeries:", bind<&EventViewResponder::switchToRecurringSeries>, "v@:@"}});
}

} // namespace mailhost
