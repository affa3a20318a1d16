// The process's time zone for the length of a test.
#pragma once

#include <QByteArray>
#include <ctime>

class ProcessZone {
public:
    explicit ProcessZone(const QByteArray &name)
        : m_before(qgetenv("TZ")) {
        set(name);
    }
    ~ProcessZone() { set(m_before); }
    ProcessZone(const ProcessZone &) = delete;
    ProcessZone &operator=(const ProcessZone &) = delete;

private:
    static void set(const QByteArray &name) {
        name.isEmpty() ? qunsetenv("TZ") : qputenv("TZ", name);
        ::tzset();
    }
    QByteArray m_before;
};
