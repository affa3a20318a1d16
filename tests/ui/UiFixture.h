// A desktop of doubles with as much of a host as the plug-in's user interface asks for.
#pragma once

#include "platform/runtime/Runtime.h"
#include "platform/services/TestServices.h"
#include "plugin/ui/strip/vlActionAdditionView.h"

#include <QAbstractButton>
#include <QTemporaryDir>
#include <QWidget>
#include <gtest/gtest.h>

struct HostEvent : rt::Object {
    HostEvent();
    bool owner = true;
    bool occurrence = false;
    bool exception = false;
    QString stored;
};

struct HostAccount : rt::Object {
    HostAccount();
    QString address;
};

struct HostEditor : rt::Object {
    HostEditor();
    HostEvent event;
    HostAccount account;
    QWidget *view = nullptr;
    QVariantMap uncommitted;
    bool cancelMode = false;
    bool occurrenceOrException = false;
    bool dirty = false;
    bool delegating = false;
    int hostSaves = 0;
    std::function<void()> onSave;
};

// A window controller with its window; the header is where the strip is.
struct HostEditorWindow : rt::Object {
    HostEditorWindow();
    ~HostEditorWindow() override;
    void open();  // tells the strip, as the hooks do
    void close(); // as a host does: tells, then the window goes away
    [[nodiscard]] QString id() const { return rt::identifier(window); }
    [[nodiscard]] vlActionAdditionView &strip() const { return *m_strip; }
    [[nodiscard]] bool hasStrip() const { return !m_strip.isNull(); }

    QPointer<QWidget> window = new QWidget;
    QPointer<QWidget> header = new QWidget(window);
    HostEditor editor;

    // That of the strip, at hand as long as the window lives.
    [[nodiscard]] const std::shared_ptr<MeetingContext> &context() const { return m_context; }

private:
    QPointer<vlActionAdditionView> m_strip;
    std::shared_ptr<MeetingContext> m_context;
    std::unique_ptr<RequestOwner::Scope> m_atHand;
};

// The text that the doubles' bundle gives for a key.
QString echo(const QString &key);

class UiTest : public testing::Test {
protected:
    UiTest();
    ~UiTest() override;

    void enableAudioConferences(bool enabled);
    void signIn(const QString &userId); // gives the workflow a profile
    // The titles of the buttons that the strip shows, sorted.
    static QStringList shownButtons(const vlActionAdditionView &strip);
    static QAbstractButton *button(const vlActionAdditionView &strip, const QString &key);
    // The sheets and alerts that are up.
    static QList<QDialog *> dialogs();

    QTemporaryDir documents;
    platform::TestDesktop desktop;
};
