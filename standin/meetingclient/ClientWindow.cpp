#include "standin/meetingclient/ClientWindow.h"

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
    auto *signedIn = new QCheckBox(tr("&Signed in"), central);
    signedIn->setChecked(m_store.signedIn());
    connect(signedIn, &QCheckBox::toggled, this, [this](bool on) { m_store.setSignedIn(on); });
    top->addWidget(m_user, 1);
    top->addWidget(signedIn);
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
    refresh();
}

// The menus give the same orders that can be sent to the running client.
void ClientWindow::makeMenus() {
    QMenu *users = menuBar()->addMenu(tr("&User"));
    for (const Person &person : people())
        addChoice(
            users, person.name, [this, person] { return m_store.profile()["userId"] == person.userId; },
            [person] { return u"user "_s + person.userId; });
    QMenu *accounts = menuBar()->addMenu(tr("Audio &conferences"));
    const QStringList texts = {tr("&None"), tr("&One account"), tr("&Two accounts"),
                               tr("Two, the second &switched off"), tr("Two with &gaps in their numbers")};
    for (qsizetype i = 0; i < texts.size(); ++i) {
        const QString choice = accountChoices[i];
        addChoice(
            accounts, texts[i], [this, choice] { return m_store.accounts() == accountsNamed(choice); },
            [choice] { return u"accounts "_s + choice; });
    }
    for (QMenu *menu : {users, accounts}) { // one of each
        auto *group = new QActionGroup(menu);
        for (QAction *action : menu->actions())
            group->addAction(action);
    }
    QMenu *principalsMenu = menuBar()->addMenu(tr("Schedules &for"));
    for (const Person &person : principals())
        addChoice(
            principalsMenu, person.name, [this, person] { return bosses().contains(person.email); },
            [this, person] {
                QMap<QString, QString> granted = bosses();
                if (granted.remove(person.email) == 0)
                    granted.insert(person.email, person.name);
                return u"bosses "_s + (granted.isEmpty() ? u"none"_s : granted.keys().join(u' '));
            });
}

void ClientWindow::addChoice(QMenu *menu, const QString &text, std::function<bool()> isMade,
                             const std::function<QString()> &order) {
    QAction *action = menu->addAction(text);
    action->setCheckable(true);
    m_choices.append({action, std::move(isMade)});
    connect(action, &QAction::triggered, this, [this, order] {
        QString error;
        if (!obey(m_store, order(), &error))
            statusBar()->showMessage(error);
        refresh();
    });
}

QMap<QString, QString> ClientWindow::bosses() const {
    QMap<QString, QString> names;
    for (const QJsonValue &boss : m_store.profile()["bosses"].toArray())
        names.insert(boss["email"].toString().toLower(), boss["displayName"].toString());
    return names;
}

QWidget *ClientWindow::makeTestPanel() {
    auto *panel = new QWidget(this);
    auto *layout = new QVBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
    auto *line = new QHBoxLayout;
    auto *label = new QLabel(tr("&Answer rule:"), panel);
    m_rule = new QLineEdit(panel);
    label->setBuddy(m_rule);
    m_rule->setPlaceholderText(tr("delay schedule 5000"));
    auto *add = new QPushButton(tr("A&dd"), panel);
    auto *clear = new QPushButton(tr("&Clear"), panel);
    for (QWidget *widget : QList<QWidget *>{label, m_rule, add, clear})
        line->addWidget(widget, widget == m_rule ? 1 : 0);
    m_activeRules = new QLabel(panel);
    m_activeRules->setWordWrap(true);
    m_log = new QPlainTextEdit(panel);
    m_log->setAccessibleName(tr("Messages"));
    m_log->setReadOnly(true);
    m_log->setMaximumBlockCount(longestLog);
    m_log->setPlaceholderText(tr("Requests and answers appear here."));
    layout->addLayout(line);
    layout->addWidget(m_activeRules);
    layout->addWidget(m_log, 1);
    connect(m_rule, &QLineEdit::returnPressed, this, &ClientWindow::addRule);
    connect(add, &QPushButton::clicked, this, &ClientWindow::addRule);
    connect(clear, &QPushButton::clicked, this, [this] {
        m_rules.clear();
        refresh();
    });
    return panel;
}

void ClientWindow::addRule() {
    QString error;
    if (!m_rules.add(m_rule->text(), &error)) {
        statusBar()->showMessage(error);
        return;
    }
    statusBar()->clearMessage();
    m_rule->clear();
    refresh();
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

void ClientWindow::refresh() {
    for (const Choice &choice : std::as_const(m_choices))
        choice.action->setChecked(choice.isMade());
    const QStringList names = bosses().values();
    m_rights->setText(tr("Audio-conference accounts: %1.  Schedules for: %2.")
                          .arg(m_store.accounts().size())
                          .arg(names.isEmpty() ? tr("nobody else") : names.join(u", "_s)));
    m_user->setText(m_store.profile()["accountName"].toString());
    showMeetings();
    m_activeRules->setText(m_rules.lines().join(u'\n'));
    m_activeRules->setVisible(!m_rules.lines().isEmpty());
    if (!m_store.lastError().isEmpty())
        statusBar()->showMessage(m_store.lastError());
}

void ClientWindow::showMeetings() {
    const QJsonObject meetings = m_store.meetings();
    m_table->setRowCount(int(meetings.size()));
    int row = 0;
    for (const QJsonValue &meeting : meetings) {
        const qint64 start = meeting["startTime"].toInteger();
        const QString when =
            start == 0 ? tr("any time")
                       : QLocale().toString(QDateTime::fromSecsSinceEpoch(start), QLocale::ShortFormat);
        const QStringList cells = {meeting["subject"].toString(), when,
                                   meeting["duration"].toVariant().toString(),
                                   meeting["meetingKey"].toString()};
        for (int column = 0; column <= meetingColumn; ++column) {
            auto *item = new QTableWidgetItem(cells[column]);
            item->setToolTip(tr("Double-click to join %1").arg(meeting["joinUrl"].toString()));
            m_table->setItem(row, column, item);
        }
        ++row;
    }
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
