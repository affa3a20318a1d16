// A running meeting client, and layers above the link that take notes of what reaches them.
#pragma once

#include "platform/services/TestServices.h"
#include "plugin/link/linkPorts.h"

#include <QList>
#include <QTemporaryDir>

namespace fuzz {

class LinkHarness : public RequestFeedback, public FinishReceiver {
public:
    struct Finished {
        MeetingCommand command;
        QVariantMap response;
    };

    // Fresh for each input: nothing that an earlier one left behind changes what this one does.
    LinkHarness();
    ~LinkHarness() override;
    LinkHarness(const LinkHarness &) = delete;
    LinkHarness &operator=(const LinkHarness &) = delete;

    // The notification arrives at everything that listens.
    void receive(const QString &channel, const platform::TextMap &userInfo);

    QList<Finished> finished;
    QStringList alerts;

    [[nodiscard]] std::unique_ptr<RequestProgress> makeProgress() override;
    void showAlertMessage(QWidget *window, const QString &message) override;
    void showClientError(QWidget *window, const QString &message) override;
    void onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) override;
    [[nodiscard]] QString getApptWindowIDByWindow(QWidget *window) const override;
    void setScheduleForEmail(const QString &email) override;

private:
    platform::TestDesktop m_desktop;
};

} // namespace fuzz
