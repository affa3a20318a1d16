// The whole host in one process, on a calendar file of the test's own.
#pragma once

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/HostApplication.h"
#include "tests/mailhost/PrintText.h"
#include "tests/support/TestServices.h"

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextEdit>
#include <gtest/gtest.h>

namespace mailhost {

class HostFixture : public testing::Test {
protected:
    static constexpr const char *calendar = R"(BEGIN:VCALENDAR
VERSION:2.0
PRODID:-//Somebody else//Planner 7//EN
BEGIN:VEVENT
UID:review@example.com
DTSTAMP:20260301T080000Z
DTSTART:20260310T090000Z
DTEND:20260310T100000Z
SUMMARY:Design review
LOCATION:Room 4
DESCRIPTION:Bring the drawings.
X-PLANNER-COLOUR;X-SHADE=dark:teal
END:VEVENT
BEGIN:VEVENT
UID:plan@example.com
DTSTAMP:20260301T080000Z
DTSTART:20260311T130000Z
DTEND:20260311T140000Z
SUMMARY:Planning
SEQUENCE:3
ORGANIZER;CN=Ada Example:mailto:ada@parlo.example
ATTENDEE;CN=Bo Guest;PARTSTAT=ACCEPTED:mailto:bo@example.com
ATTENDEE;CN=Blue room;CUTYPE=ROOM;ROLE=NON-PARTICIPANT:mailto:blue@example.com
X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda</p></body></html>
END:VEVENT
BEGIN:VEVENT
UID:foreign@example.com
DTSTAMP:20260301T080000Z
DTSTART:20260312T130000Z
DTEND:20260312T140000Z
SUMMARY:Their meeting
ORGANIZER;CN=Cy Other:mailto:cy@example.org
ATTENDEE;CN=Ada Example:mailto:ada@parlo.example
END:VEVENT
BEGIN:VEVENT
UID:daily@example.com
DTSTAMP:20260301T080000Z
DTSTART:20260309T070000Z
DTEND:20260309T071500Z
SUMMARY:Stand-up
RRULE:FREQ=DAILY;COUNT=4
END:VEVENT
END:VCALENDAR
)";

    void SetUp() override {
        platform::installTestServices();
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray(calendar).replace("\n", "\r\n"));
        file.close();
        startHost(u"16"_s);
    }
    void TearDown() override {
        host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        rt::drainTemporaries();
    }

    void startHost(const QString &version, BookmarkMangling mangling = BookmarkMangling::None) {
        host.reset();
        HostOptions options;
        options.hostVersion = version;
        options.calendarPath = path();
        options.outbox = folder.filePath(u"outbox"_s);
        options.today = QDate(2026, 3, 10);
        options.bookmarkMangling = mangling;
        host = std::make_unique<HostApplication>(options);
        host->start();
        QString error;
        ASSERT_TRUE(host->openCalendar(&error)) << qPrintable(error);
        host->show();
    }

    [[nodiscard]] QString path() const { return folder.filePath(u"work.ics"_s); }
    [[nodiscard]] QByteArray fileText() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll().replace("\r\n ", "") : QByteArray();
    }
    [[nodiscard]] Appointment onDisk(const QString &uid) const {
        QString error;
        const auto file = CalendarFile::open(path(), &error);
        return file ? file->find(uid).value_or(Appointment()) : Appointment();
    }

    void open(const QString &uid) {
        controller = host->openEditorFor(uid);
        ASSERT_NE(controller, nullptr);
        window = controller->editorWindow();
        editor = window->viewController();
        QTest::qWait(1);
    }
    template<typename T>
    T *find(const QString &name) const {
        T *widget = window->findChild<T *>(name);
        EXPECT_NE(widget, nullptr) << qPrintable(name);
        return widget;
    }
    QLineEdit *field(const QString &name) const { return find<QLineEdit>(name); }
    void type(const QString &name, const QString &text) const {
        QLineEdit *edit = field(name);
        edit->selectAll();
        if (text.isEmpty())
            QTest::keyClick(edit, Qt::Key_Delete);
        else
            QTest::keyClicks(edit, text);
    }
    void click(const QString &name) const {
        QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton);
        QTest::qWait(1);
    }
    void answer(const QString &button) const {
        auto *found = window->findChild<QPushButton *>(button);
        ASSERT_NE(found, nullptr) << qPrintable(button);
        QTest::mouseClick(found, Qt::LeftButton);
        QTest::qWait(1);
    }
    void saveByMenu() const { find<QAction>(controls::saveAction)->trigger(); }
    [[nodiscard]] QVariantMap pending() const {
        return rt::mapValue(rt::send(static_cast<rt::Object *>(editor), "uncommittedChanges"));
    }
    [[nodiscard]] QStringList messages() const {
        return QDir(folder.filePath(u"outbox"_s)).entryList(QDir::Files);
    }
    [[nodiscard]] bool isOpen() const { return EditorWindowController::open().contains(controller); }

    QTemporaryDir folder;
    std::unique_ptr<HostApplication> host;
    EditorWindowController *controller = nullptr;
    QPointer<EditorWindow> window;
    EditorViewController *editor = nullptr;
};

} // namespace mailhost
