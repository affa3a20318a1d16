// Records the reports of the link to the layers above it.
#pragma once

#include "plugin/link/linkPorts.h"
#include "plugin/link/meetingCommand.h"
#include "plugin/link/meetingKeys.h"

#include <QMap>
#include <QWidget>

class RecordingFeedback : public RequestFeedback {
public:
    struct Alert {
        QWidget *window;
        QString message;
        bool offersLaunch;
    };
    QList<Alert> alerts;
    int shown = 0;            // number of progress windows shown now
    QList<QWidget *> shownOn; // parents of the progress windows, in order

    [[nodiscard]] std::unique_ptr<RequestProgress> makeProgress(ClientAnswer) override {
        return std::make_unique<Progress>(*this);
    }
    void showAlertMessage(QWidget *window, const QString &message) override {
        alerts.append({window, message, false});
    }
    void showClientError(QWidget *window, const QString &message) override {
        alerts.append({window, message, true});
    }

private:
    struct Progress : RequestProgress {
        explicit Progress(RecordingFeedback &feedback)
            : m_feedback(feedback) {}
        void showCommunication(QWidget *window) override {
            if (std::exchange(m_shown, true))
                return;
            ++m_feedback.shown;
            m_feedback.shownOn.append(window);
        }
        void closeCommunication() override { m_feedback.shown -= std::exchange(m_shown, false); }

        RecordingFeedback &m_feedback;
        bool m_shown = false;
    };
};

class RecordingReceiver : public FinishReceiver {
public:
    struct Finished {
        MeetingCommand command;
        QVariantMap data;
        [[nodiscard]] QVariantMap response() const { return data.value(keyVlAPIResponse).toMap(); }
    };
    QList<Finished> finished;
    int denied = 0;
    QMap<QWidget *, QString> editors; // identifiers by window
    QStringList scheduledFor;

    void onExcuteCommandFinished(MeetingCommand command, const QVariantMap &data) override {
        finished.append({command, data});
    }
    void onRequestDenied() override { ++denied; }
    [[nodiscard]] QString getApptWindowIDByWindow(QWidget *window) const override {
        return editors.value(window);
    }
    void setScheduleForEmail(const QString &email) override { scheduledFor.append(email); }
};
