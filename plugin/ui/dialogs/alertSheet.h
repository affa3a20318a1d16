// The one look of all alerts.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QWidget;

enum class AlertReturn { Other = 0, Default = 1 };

// Shows the warning image, the message to the letter, and the buttons, the first being the default one (the
// last one answers Escape). Attached to the window, or on its own without one; returns at once. `ended` is
// called once on the main thread, but not when the window dies first; nothing that it throws gets out.
void showAlertSheet(QWidget *window, const QString &message, const QStringList &buttons,
                    std::function<void(AlertReturn result)> ended);
