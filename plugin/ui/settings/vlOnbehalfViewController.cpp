#include "plugin/ui/settings/vlOnbehalfViewController.h"

#include "plugin/ui/localizationKeys.h"
#include "plugin/ui/settings/SettingsSheetModel.h"
#include "plugin/util/localizedString.h"
#include "plugin/workflow/vlOnbehalfData.h"

#include <QDialog>
#include <QLabel>
#include <QLayout>

namespace {

constexpr QColor bannerColor(99, 192, 64);
const QString placeholder = u"%@"_s;

void paintBanner(QWidget *view, QLabel *label) {
    QPalette palette = view->palette();
    palette.setColor(QPalette::Window, bannerColor);
    palette.setColor(QPalette::WindowText, Qt::black); // readable on this green in a dark palette too
    view->setAutoFillBackground(true);
    view->setPalette(palette);
    label->setTextFormat(Qt::PlainText);
}

} // namespace

vlOnbehalfViewController::vlOnbehalfViewController(const SettingsSheetModel &model, QWidget *sheet)
    : m_model(model)
    , settingWindow(sheet) {
    m_view = sheet->findChild<QWidget *>(u"onbehalfView"_s);
    _textOnbehalfInfo = sheet->findChild<QLabel *>(u"_textOnbehalfInfo"_s);
    selfConstraintHeight = HeightConstraint(sheet, "selfConstraintHeight");
    if (isConnected())
        paintBanner(m_view, _textOnbehalfInfo);
}

bool vlOnbehalfViewController::needDisplayOnbehalfView() const {
    return m_model.isForOther();
}

void vlOnbehalfViewController::initFields() {
    if (needDisplayOnbehalfView()) {
        const vlOnbehalfData &onbehalf = vlOnbehalfData::sharedInstance();
        const QString name =
            onbehalf.getDisplayNameWithOnbehalfEmail(onbehalf.onbehalfEmail(m_model.apptWindowID()));
        // Inserted literally: the name may contain placeholders.
        showText(vlLocalizedString(uiKeys::onBehalfInfo).replace(placeholder, name));
    }
    updateCtrlPos();
}

// The tool tip has the whole text, because the banner may cut off a long name.
void vlOnbehalfViewController::showText(const QString &text) {
    const QMargins margins = m_view->layout()->contentsMargins();
    const int room = settingWindow->width() - margins.left() - margins.right();
    const QString shown = _textOnbehalfInfo->fontMetrics().elidedText(text, Qt::ElideRight, room);
    _textOnbehalfInfo->setText(shown);
    _textOnbehalfInfo->setAccessibleName(text);
    _textOnbehalfInfo->setToolTip(shown == text ? QString() : u"<p>%1</p>"_s.arg(text.toHtmlEscaped()));
}

void vlOnbehalfViewController::updateCtrlPos() {
    const bool needed = needDisplayOnbehalfView();
    if (needed != m_view->isHidden())
        return;
    const int change = needed ? selfConstraintHeight.constant() : -selfConstraintHeight.constant();
    const int height = settingWindow->height() + change;
    m_view->setVisible(needed);
    settingWindow->layout()->activate();
    settingWindow->resize(settingWindow->width(), height);
}
