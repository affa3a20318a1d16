// The meeting client's window: who is signed in and the meetings; in a panel that is closed at first, the
// messages on the bus and the rules for answers.
#pragma once

#include "standin/meetingclient/AnswerRules.h"
#include "standin/meetingclient/MeetingStore.h"

#include <QMainWindow>

class QActionGroup;
class QCheckBox;
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
    void refreshMeetings();
    // Comes to the front, as a click on the start URL does.
    void bringToFront(const QString &url);
    void showInstantMeeting(bool withVideo, const QString &joinUrl);

private:
    QWidget *makeTestPanel(); // the messages, and the rules that make the client misbehave
    void makeMenus();
    QAction *addChoice(QMenu *menu, QActionGroup *group, const QString &text, const QString &order);
    void showChoices();
    void give(const QString &order);
    void addRule();
    void join(int row); // opens the meeting's link in the desktop's browser
    MeetingStore &m_store;
    AnswerRules &m_rules;
    QLabel *m_user;
    QCheckBox *m_signedIn;
    QLabel *m_rights;                     // accounts, and for whom the user schedules
    QHash<QString, QAction *> m_users;    // by user id
    QHash<QString, QAction *> m_accounts; // by the name of the choice
    QHash<QString, QAction *> m_bosses;   // by address
    QTableWidget *m_table;
    QPlainTextEdit *m_log;
    QLineEdit *m_rule;
    QLabel *m_activeRules;
};

} // namespace meetingclient
