// A warning with one button.
#pragma once

#include "platform/Literals.h"
#include "plugin/ui/dialogs/alertSheet.h"
#include "plugin/util/sharedObject.h"

class vlAlertHelper : public SharedObject<vlAlertHelper> {
public:
    // Has no parent without a window. Returns at once. The button's text is the same in every language.
    void showAlertMessage(QWidget *window, const QString &message) {
        showAlertSheet(window, message, {u"OK"_s}, nullptr);
    }
};
