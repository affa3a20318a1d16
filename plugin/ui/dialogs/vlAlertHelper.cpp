#include "plugin/ui/dialogs/vlAlertHelper.h"

#include "platform/Literals.h"
#include "plugin/ui/dialogs/alertSheet.h"
#include "plugin/util/sharedObject.h"

namespace {
const QString buttonOK = u"OK"_s; // the same in every language
} // namespace

vlAlertHelper &vlAlertHelper::sharedInstance() {
    return SharedObject<vlAlertHelper>::get();
}

void vlAlertHelper::showAlertMessage(QWidget *window, const QString &message) {
    showAlertSheet(window, message, {buttonOK}, nullptr);
}
