// The double of the host: its classes by name, and objects that return the values that a test sets.
#pragma once

#include "platform/runtime/Runtime.h"

#include <QDateTime>
#include <QPointer>
#include <QStringList>
#include <QVariantMap>
#include <QWidget>
#include <functional>
#include <memory>

class QLineEdit;

namespace fakehost {

// Defines the classes, once per process. Without `withReplacedMethods`, a test that hooks the host adds the
// methods that the hooks replace.
void define(bool withReplacedMethods = true);
// Runs inside every method of an object, after it was recorded. Empty by default.
std::function<void()> &during();

} // namespace fakehost

// Members return entries of `values`, which setters change. Other calls are recorded in order and also return
// entries of `values`.
class FakeObject : public rt::Object {
public:
    explicit FakeObject(const QString &className, const QVariantMap &values = {});
    QVariantMap values;
    QStringList called;     // selectors that are neither a member nor a setter
    QVariantList arguments; // of the last of them
};

class FakeDate : public FakeObject {
public:
    explicit FakeDate(const QDateTime &instant);
    QDateTime instant;
};

// A view of one of the host's classes.
class FakeView : public QWidget, public rt::Object {
public:
    explicit FakeView(const QString &className, QWidget *parent = nullptr)
        : QWidget(parent)
        , rt::Object((fakehost::define(), rt::classNamed(className))) {}
};

// An appointment of the user: "Review" for one hour, without attendees, location and meeting.
class FakeAppointment : public FakeObject {
public:
    static QDateTime usualStart() { return {QDate(2026, 11, 24), QTime(9, 0), Qt::UTC}; }
    FakeAppointment();

    void carriesTheMeeting(const QString &key, const QString &joinUrl = {});
    [[nodiscard]] QString location() const { return values.value(u"location"_s).toString(); }
    [[nodiscard]] QString subject() const { return values.value(u"summary"_s).toString(); }

private:
    FakeDate m_start{usualStart()}, m_end{usualStart().addSecs(60 * 60)};
};

// An editor with its window, its window controller, its header, its location field and a Word-style body
// editor. `called` contains the host operations that were run on it.
class FakeEditor : public FakeObject {
public:
    explicit FakeEditor(FakeAppointment &appointment);
    ~FakeEditor() override;

    [[nodiscard]] QWidget *window() { return m_window; }
    [[nodiscard]] QWidget *header() { return m_view; }
    [[nodiscard]] QLineEdit *locationField() { return m_locationField; }
    [[nodiscard]] FakeObject *windowController() { return &m_windowController; }
    [[nodiscard]] FakeObject *bodyEditor() { return &m_bodyEditor; }
    // The text in the body editor.
    [[nodiscard]] QString body() const { return m_bodyContent.values.value(u"bodyContent"_s).toString(); }
    // The stored plug-in record; null if none was written.
    [[nodiscard]] QString record() const { return rt::textValue(values.value(u"olmUCCapabilities"_s)); }
    void pends(const QString &member, const QVariant &value); // adds an unsaved edit
    void close(); // notifies and deletes the window, as the host does

private:
    QPointer<QWidget> m_window = new QWidget;
    QWidget *m_view;
    QLineEdit *m_locationField;
    FakeObject m_windowController;
    FakeObject m_bodyContent;
    FakeObject m_bodyEditor;
};
