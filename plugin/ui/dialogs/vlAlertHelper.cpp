#include "plugin/ui/dialogs/vlAlertHelper.h"

#include "platform/Literals.h"
#include "plugin/ui/dialogs/alertSheet.h"

namespace {
const QString buttonOK = u"OK"_s; // the same in every language
} // namespace

void vlAlertHelper::showAlertMessage(QWidget *window, const QString &message) {
    showAlertSheet(window, message, {buttonOK}, nullptr);
}
