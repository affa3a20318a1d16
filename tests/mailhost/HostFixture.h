// The whole host in one process, on a calendar file of the test's own.
#pragma once

#include "platform/runtime/Runtime.h"
#include "standin/mailhost/windows/ControlNames.h"
#include "standin/mailhost/windows/HostApplication.h"
#include "tests/mailhost/PrintText.h"
#include "tests/support/CalendarBuilder.h"
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
    static QByteArray calendar() {
        const auto times = [](const QByteArray &start, const QByteArray &end) {
            return "DTSTART:202603" + start + "Z\nDTEND:202603" + end + "Z\n";
        };
        return CalendarBuilder()
            .event(u"review@example.com"_s, "Design review",
                   times("10T090000", "10T100000") + "LOCATION:Room 4\nDESCRIPTION:Bring the drawings.\n"
                                                     "X-PLANNER-COLOUR;X-SHADE=dark:teal\n")
            .event(u"plan@example.com"_s, "Planning",
                   times("11T130000", "11T140000") +
                       "SEQUENCE:3\nORGANIZER;CN=Ada Example:mailto:ada@parlo.example\n"
                       "ATTENDEE;CN=Bo Guest;PARTSTAT=ACCEPTED:mailto:bo@example.com\n"
                       "ATTENDEE;CN=Blue room;CUTYPE=ROOM;ROLE=NON-PARTICIPANT:mailto:blue@example.com\n"
                       "X-ALT-DESC;FMTTYPE=text/html:<html><body><p>Agenda</p></body></html>\n")
            .event(u"foreign@example.com"_s, "Their meeting",
                   times("12T130000", "12T140000") + "ORGANIZER;CN=Cy Other:mailto:cy@example.org\n"
                                                     "ATTENDEE;CN=Ada Example:mailto:ada@parlo.example\n")
            .event(u"daily@example.com"_s, "Stand-up",
                   times("09T070000", "09T071500") + "RRULE:FREQ=DAILY;COUNT=4;BYHOUR=7\n")
            .event(u"trip@example.com"_s, "Trip", "DTSTART;VALUE=DATE:20260310\nDTEND;VALUE=DATE:20260312\n")
            .text();
    }

    void SetUp() override {
        platform::installTestServices();
        writeFile(calendar());
        HostOptions options;
        options.hostVersion = u"16"_s;
        options.calendarPath = path();
        options.outbox = folder.filePath(u"outbox"_s);
        options.today = QDate(2026, 3, 10);
        host = std::make_unique<HostApplication>(options);
        host->start();
        QString error;
        ASSERT_TRUE(host->openCalendar(&error)) << qPrintable(error);
        host->show();
    }
    void TearDown() override {
        host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    [[nodiscard]] QString path() const { return folder.filePath(u"work.ics"_s); }
    [[nodiscard]] QByteArray fileText() const {
        QFile file(path());
        return file.open(QIODevice::ReadOnly) ? file.readAll().replace("\r\n ", "") : QByteArray();
    }
    // `day` is that of a changed day of a series.
    [[nodiscard]] Appointment onDisk(const QString &uid, const QString &day = {}) const {
        QString error;
        const auto file = CalendarFile::open(path(), &error);
        return file ? file->find(uid, day).value_or(Appointment()) : Appointment();
    }
    void writeFile(const QByteArray &text) const {
        QFile file(path());
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
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
    // A button of the editor, of the main window or of a dialog of theirs.
    void click(const QString &name) const {
        for (QWidget *parent : {static_cast<QWidget *>(window), static_cast<QWidget *>(main())}) {
            auto *button = parent ? parent->findChild<QPushButton *>(name) : nullptr;
            if (!button || !button->isVisible())
                continue;
            QTest::mouseClick(button, Qt::LeftButton);
            QTest::qWait(1);
            return;
        }
        FAIL() << qPrintable(name);
    }
    void saveByMenu() const { find<QAction>(controls::saveAction)->trigger(); }
    [[nodiscard]] QVariantMap pending() const {
        return rt::mapValue(rt::send(static_cast<rt::Object *>(editor), "uncommittedChanges"));
    }
    [[nodiscard]] QStringList messages() const {
        return QDir(folder.filePath(u"outbox"_s)).entryList(QDir::Files);
    }
    [[nodiscard]] MainWindow *main() const { return host->mainWindowController()->mainWindow(); }
    void trigger(const QString &action) const {
        EXPECT_TRUE(main()->command(action)->isEnabled()) << qPrintable(action);
        main()->command(action)->trigger();
        QTest::qWait(1);
    }
    void select(const QString &uid, const QString &day = {}) const {
        ASSERT_TRUE(main()->calendar()->select(uid, day)) << qPrintable(uid);
    }
    [[nodiscard]] bool isOpen() const { return EditorWindowController::open().contains(controller); }

    QTemporaryDir folder;
    std::unique_ptr<HostApplication> host;
    EditorWindowController *controller = nullptr;
    QPointer<EditorWindow> window;
    EditorViewController *editor = nullptr;
};

} // namespace mailhost
