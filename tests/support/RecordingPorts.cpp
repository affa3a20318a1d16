#include "tests/support/RecordingPorts.h"

#include "plugin/link/meetingKeys.h"

RecordingStrip::RecordingStrip(FakeEditor &editor)
    : window(editor.window())
    , m_editor(&editor)
    , m_windowController(editor.windowController()) {
    m_context->strip = this;
}

QString RecordingStrip::getAppointmentWindowID() const {
    return rt::identifier(window.data());
}

bool RecordingStrip::currentIsVelaMeeting() const {
    return !m_context->meetingKey.isEmpty();
}

void RecordingStrip::setActionResultData(const QVariantMap &answer) {
    succeeded = answer.value(keyVLResult).toString() == keyVLSuccess;
}

namespace {

template<typename Matches>
EditorStrip *firstOf(const QList<RecordingStrip *> &strips, Matches matches) {
    for (RecordingStrip *strip : strips)
        if (matches(*strip))
            return strip;
    return nullptr;
}

class NotingProgress : public RequestProgress {
public:
    explicit NotingProgress(RecordingAlerts &alerts)
        : m_alerts(alerts) {}
    void showCommunication(QWidget *window) override { m_alerts.progressOn.append(window); }
    void closeCommunication() override {}

private:
    RecordingAlerts &m_alerts;
};

} // namespace

EditorStrip *RecordingStrips::getVlActionAdditionViewByEditorViewCtrl(rt::Object *editor) const {
    return firstOf(live, [=](const auto &strip) { return strip.editorViewController() == editor; });
}

EditorStrip *RecordingStrips::getVlActionAdditionViewByApptWindowID(const QString &identifier) const {
    return firstOf(live, [&](const auto &strip) { return strip.getAppointmentWindowID() == identifier; });
}

EditorStrip *RecordingStrips::getVlActionAdditionViewByWindow(const QWidget *window) const {
    return firstOf(live, [=](const auto &strip) { return strip.window == window; });
}

void RecordingSheets::addSchSettingWindowToArray(const QString &, const QVariantMap &newData,
                                                 QWidget *newParent) {
    data = newData;
    parent = newParent;
}

std::unique_ptr<RequestProgress> RecordingAlerts::makeProgress(ClientAnswer) {
    return std::make_unique<NotingProgress>(*this);
}

void RecordingAlerts::showAlertMessage(QWidget *window, const QString &message) {
    messages.append({window, message});
}

void RecordingAlerts::showClientError(QWidget *window, const QString &message) {
    messages.append({window, message});
}

void RecordingAlerts::showRemoveMeetingWarning(rt::Object *editor, QWidget *window) {
    removeWarnings.append({editor, window});
}
