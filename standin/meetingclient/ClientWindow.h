// The meeting client's window: who is signed in and the meetings; in a panel that is closed at first, the
// messages on the bus and the rules for answers.
#pragma once

#include "standin/meetingclient/AnswerRules.h"
#include "standin/meetingclient/MeetingStore.h"

#include <QMainWindow>
#include <functional>

class QLabel;
class QLineEdit;
class QMenu;
class QPlainTextEdit;
class QTableWidget;

namespace meetingclient {

class ClientWindow : public QMainWindow {
    Q_OBJECT
public:
    // Both references must outlive the window.
    ClientWindow(MeetingStore &store, AnswerRules &rules);

    void appendLog(const QString &line);
    // Shows what the store and the rules have now.
    void refresh();
    // Comes to the front, as a click on the start URL does.
    void bringToFront(const QString &url);
    void showInstantMeeting(bool withVideo, const QString &joinUrl);

private:
    // An entry of a menu, and whether its choice is the present one.
    struct Choice {
        QAction *action;
        std::function<bool()> isMade;
    };
    QWidget *makeTestPanel(); // the messages, and the rules that make the client misbehave
    void makeMenus();
    void addChoice(QMenu *menu, const QString &text, std::function<bool()> isMade,
                   const std::function<QString()> &order);
    [[nodiscard]] QMap<QString, QString> bosses() const; // names by address
    void addRule();
    void showMeetings();
    void join(int row); // opens the meeting's link in the desktop's browser
    MeetingStore &m_store;
    AnswerRules &m_rules;
    QList<Choice> m_choices;
    QLabel *m_user;
    QLabel *m_rights; // accounts, and for whom the user schedules
    QTableWidget *m_table;
    QPlainTextEdit *m_log;
    QLineEdit *m_rule;
    QLabel *m_activeRules;
};

} // namespace meetingclient
