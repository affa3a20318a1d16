#include "plugin/ui/dialogs/vlAlertHelper.h"

#include "plugin/link/sharedObject.h"
#include "plugin/ui/dialogs/alertSheet.h"

namespace {
const QString buttonOK = QStringLiteral("OK"); // the same in every language
} // namespace

vlAlertHelper &vlAlertHelper::sharedInstance() {
    return SharedObject<vlAlertHelper>::get();
}

void vlAlertHelper::showAlertMessage(QWidget *window, const QString &message) {
    showAlertSheet(window, message, {buttonOK}, nullptr);
}
