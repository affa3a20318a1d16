#include "standin/meetingclient/ClientWindow.h"

#include "platform/Literals.h"
#include "standin/meetingclient/People.h"

#include <QActionGroup>
#include <QCheckBox>
#include <QDateTime>
#include <QDesktopServices>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QMenuBar>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTableWidget>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

namespace meetingclient {

namespace {
constexpr int longestLog = 2000;
constexpr int meetingColumn = 3; // the last one
} // namespace

ClientWindow::ClientWindow(MeetingStore &store, AnswerRules &rules)
    : m_store(store)
    , m_rules(rules) {
    setWindowTitle(tr("Parlo Meetings"));
    resize(760, 560);
    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);

    auto *top = new QHBoxLayout;
    m_user = new QLabel(central);
    QFont large = m_user->font();
    large.setPointSizeF(large.pointSizeF() * 1.4);
    m_user->setFont(large);
    m_signedIn = new QCheckBox(tr("&Signed in"), central);
    m_signedIn->setChecked(m_store.signedIn());
    connect(m_signedIn, &QCheckBox::toggled, this, [this](bool on) { m_store.setSignedIn(on); });
    top->addWidget(m_user, 1);
    top->addWidget(m_signedIn);
    layout->addLayout(top);
    m_rights = new QLabel(central);
    m_rights->setWordWrap(true);
    layout->addWidget(m_rights);

    m_table = new QTableWidget(0, 4, central);
    m_table->setAccessibleName(tr("Meetings"));
    m_table->setHorizontalHeaderLabels({tr("Subject"), tr("Starts"), tr("Minutes"), tr("Meeting")});
    m_table->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_table->horizontalHeader()->setSectionResizeMode(0, QHeaderView::Stretch);
    m_table->verticalHeader()->hide();
    m_table->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    connect(m_table, &QTableWidget::cellActivated, this, &ClientWindow::join);
    layout->addWidget(m_table, 3);

    auto *opensTest = new QToolButton(central);
    opensTest->setText(tr("&Test panel"));
    opensTest->setToolTip(tr("Messages, and rules that change the answers"));
    opensTest->setCheckable(true);
    opensTest->setAutoRaise(true);
    opensTest->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    opensTest->setArrowType(Qt::RightArrow);
    layout->addWidget(opensTest);
    QWidget *test = makeTestPanel();
    test->hide();
    connect(opensTest, &QToolButton::toggled, this, [test, opensTest](bool open) {
        opensTest->setArrowType(open ? Qt::DownArrow : Qt::RightArrow);
        test->setVisible(open);
    });
    layout->addWidget(test, 3);
    setCentralWidget(central);
    makeMenus();
    refreshMeetings();
}

// The menus give the same orders that can be sent to the running client.
void ClientWindow::makeMenus() {
    QMenu *users = menuBar()->addMenu(tr("&User"));
    auto *oneUser = new QActionGroup(this);
    for (const Person &person : people())
        m_users.insert(person.userId, addChoice(users, oneUser, person.name, u"user "_s + person.userId));
    QMenu *accounts = menuBar()->addMenu(tr("Audio &conferences"));
    auto *oneChoice = new QActionGroup(this);
    const QStringList texts = {tr("&None"), tr("&One account"), tr("&Two accounts"),
                               tr("Two, the second &switched off"), tr("Two with &gaps in their numbers")};
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QString choice = accountChoices()[i];
        m_accounts.insert(choice, addChoice(accounts, oneChoice, texts[i], u"accounts "_s + choice));
    }
    QMenu *bosses = menuBar()->addMenu(tr("Schedules &for"));
    for (const Person &person : principals()) {
        QAction *action = bosses->addAction(person.name);
        action->setCheckable(true);
        m_bosses.insert(person.email, action);
        connect(action, &QAction::triggered, this, [this] {
            QStringList granted;
            for (auto it = m_bosses.cbegin(); it != m_bosses.cend(); ++it)
                if (it.value()->isChecked())
                    granted.append(it.key());
            granted.sort();
            give(u"bosses "_s + (granted.isEmpty() ? u"none"_s : granted.join(u' ')));
        });
    }
}

QAction *ClientWindow::addChoice(QMenu *menu, QActionGroup *group, const QString &text,
                                 const QString &order) {
    QAction *action = group->addAction(menu->addAction(text));
    action->setCheckable(true);
    connect(action, &QAction::triggered, this, [this, order] { give(order); });
    return action;
}

void ClientWindow::give(const QString &order) {
    QString error;
    if (!obey(m_store, order, &error))
        statusBar()->showMessage(error);
    refreshMeetings();
}

void ClientWindow::showChoices() {
    const QJsonObject profile = m_store.profile();
    const QString userId = profile["userId"].toString();
    for (auto it = m_users.cbegin(); it != m_users.cend(); ++it)
        it.value()->setChecked(it.key() == userId);
    for (auto it = m_accounts.cbegin(); it != m_accounts.cend(); ++it)
        it.value()->setChecked(m_store.accounts() == accountsNamed(it.key()));
    QStringList granted;
    for (const QJsonValue &boss : profile["bosses"].toArray())
        granted.append(boss.toObject()["email"].toString().toLower());
    QStringList names;
    for (auto it = m_bosses.cbegin(); it != m_bosses.cend(); ++it) {
        it.value()->setChecked(granted.contains(it.key()));
        if (it.value()->isChecked())
            names.append(it.value()->text());
    }
    m_rights->setText(tr("Audio-conference accounts: %1.  Schedules for: %2.")
                          .arg(m_store.accounts().size())
                          .arg(names.isEmpty() ? tr("nobody else") : names.join(u", "_s)));
}

QWidget *ClientWindow::makeTestPanel() {
    auto *row = new QWidget(this);
    auto *layout = new QVBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *line = new QHBoxLayout;
    auto *label = new QLabel(tr("&Answer rule:"), row);
    m_rule = new QLineEdit(row);
    label->setBuddy(m_rule);
    m_rule->setPlaceholderText(tr("delay schedule 5000"));
    auto *add = new QPushButton(tr("A&dd"), row);
    auto *clear = new QPushButton(tr("&Clear"), row);
    line->addWidget(label);
    line->addWidget(m_rule, 1);
    line->addWidget(add);
    line->addWidget(clear);
    m_activeRules = new QLabel(row);
    m_activeRules->setWordWrap(true);
    layout->addLayout(line);
    layout->addWidget(m_activeRules);
    m_log = new QPlainTextEdit(row);
    m_log->setAccessibleName(tr("Messages"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(longestLog);
    m_log->setPlaceholderText(tr("Requests and answers appear here."));
    layout->addWidget(m_log, 1);
    connect(m_rule, &QLineEdit::returnPressed, this, &ClientWindow::addRule);
    connect(add, &QPushButton::clicked, this, &ClientWindow::addRule);
    connect(clear, &QPushButton::clicked, this, [this] {
        m_rules.clear();
        refreshMeetings();
    });
    return row;
}

void ClientWindow::addRule() {
    QString error;
    if (!m_rules.add(m_rule->text(), &error)) {
        statusBar()->showMessage(error);
        return;
    }
    statusBar()->clearMessage();
    m_rule->clear();
    refreshMeetings();
}

void ClientWindow::join(int row) {
    const QJsonObject meeting =
        m_store.meetings().value(m_table->item(row, meetingColumn)->text()).toObject();
    const QUrl link(meeting["joinUrl"].toString(), QUrl::StrictMode);
    const bool isOpened = link.scheme() == u"https" && QDesktopServices::openUrl(link);
    statusBar()->showMessage((isOpened ? tr("Opened %1") : tr("Nothing on this desktop opens the link “%1”."))
                                 .arg(link.toDisplayString()));
}

void ClientWindow::appendLog(const QString &line) {
    m_log->appendPlainText(line);
}

void ClientWindow::refreshMeetings() {
    showChoices();
    m_user->setText(m_store.profile()["accountName"].toString());
    const QJsonObject meetings = m_store.meetings();
    m_table->setRowCount(int(meetings.size()));
    int row = 0;
    for (const QJsonValue &value : meetings) {
        const QJsonObject meeting = value.toObject();
        const qint64 start = meeting["startTime"].toInteger();
        const QString when =
            start == 0 ? tr("any time")
                       : QLocale().toString(QDateTime::fromSecsSinceEpoch(start), QLocale::ShortFormat);
        m_table->setItem(row, 0, new QTableWidgetItem(meeting["subject"].toString()));
        m_table->setItem(row, 1, new QTableWidgetItem(when));
        m_table->setItem(row, 2, new QTableWidgetItem(meeting["duration"].toVariant().toString()));
        m_table->setItem(row, meetingColumn, new QTableWidgetItem(meeting["meetingKey"].toString()));
        for (int column = 0; column <= meetingColumn; ++column)
            m_table->item(row, column)
                ->setToolTip(tr("Double-click to join %1").arg(meeting["joinUrl"].toString()));
        ++row;
    }
    m_activeRules->setText(m_rules.lines().join(u'\n'));
    m_activeRules->setVisible(!m_rules.lines().isEmpty());
    if (!m_store.lastError().isEmpty())
        statusBar()->showMessage(m_store.lastError());
}

void ClientWindow::bringToFront(const QString &url) {
    appendLog(tr("Brought to the front by %1").arg(url));
    show();
    raise();
    activateWindow();
}

void ClientWindow::showInstantMeeting(bool withVideo, const QString &joinUrl) {
    const QString text =
        withVideo ? tr("Instant meeting with video: %1") : tr("Instant meeting without video: %1");
    statusBar()->showMessage(text.arg(joinUrl));
    appendLog(text.arg(joinUrl));
    show();
    raise();
}

} // namespace meetingclient
