#include "plugin/link/requests/feedbackErrors.h"

#include <QStringView>
#include <span>

namespace {

struct ResultText {
    QStringView text;
    ClientError error;
};

constexpr ResultText meetingResults[] = {{u"0;Error 3001", ClientError::MeetingNotFound},
                                         {u"0;Error 3018", ClientError::MeetingNotFound},
                                         {u"0;Error 2", ClientError::Network},
                                         {u"0;Error 5003", ClientError::Network},
                                         {u"0;Error VelaClientNotSignIn", ClientError::NotSignedIn}};
constexpr ResultText profileResults[] = {{u"0;Error VelaClientNotSignIn", ClientError::NotSignedIn},
                                         {u"0;Error 2", ClientError::Network},
                                         {u"0;Error 5003", ClientError::Network}};
constexpr ResultText accountsResults[] = {{u"0;Error VelaClientNotSignIn", ClientError::NotSignedIn}};

ClientError errorIn(std::span<const ResultText> results, const QString &content) {
    if (content.isEmpty())
        return ClientError::System;
    for (const ResultText &result : results) {
        if (content == result.text)
            return result.error;
    }
    return ClientError::None;
}

} // namespace

ClientError meetingFeedbackError(const QString &content) {
    return errorIn(meetingResults, content);
}

ClientError profileFeedbackError(const QString &content) {
    return errorIn(profileResults, content);
}

ClientError accountsFeedbackError(const QString &content) {
    return errorIn(accountsResults, content);
}
