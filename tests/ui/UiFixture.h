// The plug-in's user interface on a desktop of doubles.
#pragma once

#include "plugin/ui/strip/vlActionAdditionView.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FreshPlugin.h"

#include <QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets>
#include <gtest/gtest.h>

// An open editor with a strip in its header. Its context is the current one during the lifetime of this
// object.
struct EditorWithStrip {
    EditorWithStrip();
    void open(); // tells the strip, as the hooks do
    void attach() { strip().attachOutlookERCalendarEventEditorWindowController(editor.windowController()); }
    [[nodiscard]] QString id() { return rt::identifier(window); }
    [[nodiscard]] vlActionAdditionView &strip() const { return *m_strip; }
    [[nodiscard]] bool hasStrip() const { return !m_strip.isNull(); }
    [[nodiscard]] const std::shared_ptr<MeetingContext> &context() const { return m_context; }

    FakeAppointment event;
    FakeObject account{"ECEmailAccount"};
    FakeEditor editor{event};
    QPointer<QWidget> window = editor.window();

private:
    QPointer<vlActionAdditionView> m_strip;
    std::shared_ptr<MeetingContext> m_context;
    std::unique_ptr<RequestOwner::Scope> m_atHand;
};

// The text that the doubles' bundle gives for a key.
inline QString echo(const QString &key) {
    return u'[' + key + u']';
}

class UiTest : public testing::Test {
protected:
    UiTest();
    ~UiTest() override;

    static void enableAudioConferences(bool enabled);
    static void signIn(const QVariantMap &more = {}); // gives the workflow the profile of "user"
    // The titles of the buttons that the strip shows, sorted.
    static QStringList shownButtons(const vlActionAdditionView &strip);
    static QAbstractButton *button(const vlActionAdditionView &strip, const QString &key);
    // The sheets and alerts that are up.
    static QList<QDialog *> dialogs();

    QTemporaryDir documents;
    FreshPlugin fresh;
    platform::TestDesktop &desktop = fresh.desktop;
};
