// Questions and messages to the person, and the responder that opens a series.
#pragma once

#include "platform/runtime/Object.h"

#include <QMessageBox>
#include <memory>

namespace mailhost {

class EditorViewController;

// A message box with the parent as its owner, without buttons.
[[nodiscard]] QMessageBox *makeMessage(QWidget *parent, const QString &name, const QString &text,
                                       const QString &detail);
// Shows a message that can only be confirmed; modal for the parent, which may be nullptr, without blocking.
void showErrorMessage(QWidget *parent, const QString &message);

// The object that answers "switchToRecurringSeries:" for an editor (not owned).
[[nodiscard]] std::unique_ptr<rt::Object> makeSeriesResponder(EditorViewController *controller);
void defineResponderClass();

} // namespace mailhost
