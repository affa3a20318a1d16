// The common look of all alerts.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

class QWidget;

enum class AlertReturn { Other = 0, Default = 1 };

// Shows the warning image, the message as plain text, and the buttons: the first is the default one, Escape
// presses the last. The alert is attached to the window, or has no parent without one. Returns at once.
// `ended` is called once on the main thread, except if the window is deleted first. Its exceptions are
// caught.
void showAlertSheet(QWidget *window, const QString &message, const QStringList &buttons,
                    std::function<void(AlertReturn result)> ended);
