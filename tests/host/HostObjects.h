// A small host: classes known by name, whose objects answer what a test puts into them.
#pragma once

#include "platform/runtime/Runtime.h"

#include <QTimeZone>
#include <QVariantMap>
#include <QWidget>

// Answers its members from `values` and remembers what was called. A setter changes its value.
class HostObject : public rt::Object {
public:
    explicit HostObject(const QString &className, const QVariantMap &values = {});

    struct Call {
        QString member;
        QVariantList arguments;
    };
    QVariantMap values;
    QList<Call> calls;
};

// A date of the host.
class HostDate : public HostObject {
public:
    HostDate(const QString &utc, const QTimeZone &zone);
    QDateTime utc;
};

// The older body editor: a view with a web frame, a document, its element and its body.
class ComposeView : public QWidget, public rt::Object {
public:
    ComposeView(QWidget *parent, const QString &html);
    [[nodiscard]] QString writtenBody() const; // null when nothing was written

private:
    friend rt::Value composeViewMainFrame(rt::Object *, rt::Selector, rt::Args);
    HostObject m_root, m_body, m_document, m_frame;
};

// Defines the classes; once for the process.
void defineHost();
