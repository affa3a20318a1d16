// The plug-in's user interface with doubles of all services.
#pragma once

#include "plugin/link/meetingKeys.h"
#include "plugin/link/readers/vlUserProfileHelper.h"
#include "plugin/link/vlCommon.h"
#include "plugin/link/vlMeetingCommon.h"
#include "plugin/ui/strip/vlActionAdditionView.h"
#include "plugin/ui/strip/vlActionAdditionViewMonitor.h"
#include "tests/support/FakeHost.h"
#include "tests/support/FreshPlugin.h"

#include <QTemporaryDir>
#include <QtTest/QTest>
#include <QtWidgets>
#include <gtest/gtest.h>

// An open editor with a strip in its header. Its context is the current one during the lifetime of this
// object.
struct EditorWithStrip {
    EditorWithStrip() {
        window->resize(1000, 300);
        editor.header()->setGeometry(0, 0, 1000, 150);
        editor.values.insert("currentEmailAccount", rt::fromObject(&account));
        vlActionAdditionView::create(editor.header(), g_vlAdditionViewFrame);
        m_strip = editor.header()->findChild<vlActionAdditionView *>();
        m_context = m_strip->context();
        m_atHand = std::make_unique<RequestOwner::Scope>(m_context);
    }
    // Tells the strip of the editor, as the hooks do.
    void open() {
        vlActionAdditionView::onChangeUINotification(
            {{keyECCalendarEvent, rt::fromObject(&event)},
             {keyERCalendarEventEditorWindowController, rt::fromObject(editor.windowController())}});
    }
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

// The text that the double of the bundle returns for a key.
inline QString echo(const QString &key) {
    return u'[' + key + u']';
}

inline void pointerOver(QWidget &widget) {
    QEnterEvent enter(QPointF(1, 1), QPointF(1, 1), QPointF(1, 1));
    QApplication::sendEvent(&widget, &enter);
}

inline QImage picture(QWidget &widget, int ratio = 1) {
    QImage image(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(ratio);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::RenderFlags());
    return image;
}

// Whether the left edge of the widget, which is on the screen, is painted soon after the change.
inline bool repaints(QWidget &widget, const std::function<void()> &change) {
    struct : QObject {
        bool eventFilter(QObject *, QEvent *event) override {
            if (event->type() == QEvent::Paint)
                seen = seen || static_cast<QPaintEvent *>(event)->region().contains(QPoint(0, 5));
            return false;
        }
        bool seen = false;
    } paints;
    QTest::qWait(50); // the window has been shown
    widget.installEventFilter(&paints);
    change();
    return QTest::qWaitFor([&paints] { return paints.seen; }, 300);
}

class UiTest : public testing::Test {
protected:
    UiTest() {
        desktop.workspace->root = documents.path();
        desktop.workspace->documents = documents.path();
        desktop.bundle->interfaceFolder = u"" PLUGIN_RESOURCES ""_s;
        WorkflowPorts::instance().strips = &vlActionAdditionViewMonitor::sharedInstance();
        static_cast<void>(vlMeetingMgr::sharedInstance()); // it observes the sheets from now on
    }
    ~UiTest() override {
        qDeleteAll(dialogs());
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void enableAudioConferences(bool enabled) {
        vlCommon::createDocumentOutlookPluginRootPath();
        vlMeetingCommon::setSiteConfigMember(vl_LocalProfile_EnablePAC, enabled);
    }
    // Gives the workflow the profile of "user".
    static void signIn(const QVariantMap &more = {}) {
        QVariantMap profile{{"userId", "user"}, {"roomMeetingId", "1234567890"}};
        profile.insert(more);
        vlUserProfileHelper::sharedInstance().setUserProfile(profile);
    }
    // The titles of the buttons that the strip shows.
    static QStringList shownButtons(const vlActionAdditionView &strip) {
        QStringList titles;
        for (const QAbstractButton *button : strip.findChildren<QAbstractButton *>())
            if (!button->isHidden())
                titles.append(button->accessibleName());
        return titles;
    }
    static QAbstractButton *button(const vlActionAdditionView &strip, const QString &key) {
        for (QAbstractButton *button : strip.findChildren<QAbstractButton *>())
            if (button->accessibleName() == echo(key))
                return button;
        return nullptr;
    }
    // The visible sheets and alerts.
    static QList<QDialog *> dialogs() {
        QList<QDialog *> shown;
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *dialog = qobject_cast<QDialog *>(widget); dialog && dialog->isVisible())
                shown.append(dialog);
        return shown;
    }

    QTemporaryDir documents;
    FreshPlugin fresh;
    platform::TestDesktop &desktop = fresh.desktop;
};
