#include "plugin/ui/dialogs/alertSheet.h"

#include "platform/services/Services.h"
#include "platform/toolkit/Windows.h"

#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QRegularExpression>
#include <algorithm>

namespace {

constexpr int usualWidth = 320;  // of the message, in points
constexpr int widestWidth = 384; // used if it saves a line
constexpr int sideMargin = 20;
constexpr int topMargin = 16;
constexpr int bottomMargin = 20;

const QString imageWarning = u"warning.png"_s;
const QString outletTitle = u"qt_msgbox_label"_s;
const QString outletMessage = u"qt_msgbox_informativelabel"_s;

QPixmap warningIcon(qreal ratio) {
    return QPixmap::fromImage(platform::services().pluginBundle->image(imageWarning, ratio));
}

// A label breaks lines only at blanks, and would cut an address that is wider than the alert.
QString withBreaks(QString message) {
    static const QRegularExpression longWord(u"([!-~]{40})(?=[!-~])"_s);
    return message.replace(longWord, u"\\1\u200B"_s);
}

// A message may come from the client, so markup in it must not be interpreted.
void showPlainly(QMessageBox *alert, const QString &message) {
    alert->setInformativeText(u" "_s); // makes the label before the text can select its format
    if (auto *label = alert->findChild<QLabel *>(outletMessage))
        label->setTextFormat(Qt::PlainText);
    alert->setInformativeText(withBreaks(message));
    if (auto *title = alert->findChild<QLabel *>(outletTitle))
        title->hide();
    alert->setAccessibleName(message);
}

void addButtons(QMessageBox *alert, const QStringList &buttons) {
    for (const QString &text : buttons) {
        const bool isFirst = alert->buttons().isEmpty();
        QPushButton *button =
            alert->addButton(text, isFirst ? QMessageBox::AcceptRole : QMessageBox::RejectRole);
        if (isFirst)
            alert->setDefaultButton(button);
        alert->setEscapeButton(button);
    }
}

// The smallest width that needs no further line of text, which makes the lines about equally long.
int balancedWidth(const QLabel &label) {
    const auto linesIn = [&label](int width) {
        return label.fontMetrics().boundingRect(QRect(0, 0, width, 0), Qt::TextWordWrap, label.text());
    };
    const int fewest = linesIn(widestWidth).height();
    const auto isTooNarrow = [&linesIn, fewest](int width) {
        const QRect lines = linesIn(width);
        return lines.height() > fewest || lines.width() > width;
    };
    int width = widestWidth;
    while (!isTooNarrow(width - 1))
        --width;
    return width;
}

// The hidden title still has a row above the message, which would move a short message below the image.
// Without a minimum width the box would be as narrow as possible.
void arrange(QMessageBox *alert) {
    auto *label = alert->findChild<QLabel *>(outletMessage);
    auto *grid = qobject_cast<QGridLayout *>(alert->layout());
    if (!label || !grid)
        return;
    grid->setContentsMargins(sideMargin, topMargin, sideMargin, bottomMargin);
    int row = 0, column = 0, rows = 0, columns = 0;
    grid->getItemPosition(grid->indexOf(label), &row, &column, &rows, &columns);
    grid->setRowStretch(row, 1);
    label->setAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    const int lines = balancedWidth(*label);
    label->setMinimumWidth(std::max(lines, usualWidth));
    label->setContentsMargins(0, 0, label->minimumWidth() - lines, 0);
}

} // namespace

void showAlertSheet(QWidget *window, const QString &message, const QStringList &buttons,
                    std::function<void(AlertReturn result)> ended) {
    auto *alert = new QMessageBox;
    alert->setAttribute(Qt::WA_QuitOnClose, false);
    alert->setIconPixmap(warningIcon(window ? window->devicePixelRatioF() : alert->devicePixelRatioF()));
    showPlainly(alert, message);
    addButtons(alert, buttons);
    arrange(alert);
    if (window)
        QObject::connect(window->window(), &QObject::destroyed, alert, &QObject::deleteLater);
    platform::beginSheet(alert, window, [alert, handler = std::move(ended)](int) {
        alert->deleteLater();
        const bool isDefault = alert->clickedButton() && alert->clickedButton() == alert->defaultButton();
        if (handler)
            handler(isDefault ? AlertReturn::Default : AlertReturn::Other);
    });
}
