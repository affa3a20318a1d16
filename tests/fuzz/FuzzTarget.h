// A fuzz target gets bytes from outside. The fuzzer and the test of the corpora use the same targets.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <vector>

namespace fuzz {

struct FuzzTarget {
    const char *name; // also of the folder with its corpus
    void (*open)(const QByteArray &bytes);
};

// All targets that are linked into the program.
[[nodiscard]] std::vector<FuzzTarget> &fuzzTargets();

// A static object of this class in a file adds its target.
struct AddFuzzTarget {
    AddFuzzTarget(const char *name, void (*open)(const QByteArray &bytes)) {
        fuzzTargets().push_back({name, open});
    }
};

// A condition that must hold for every input. If it does not, the fuzzer aborts and the test fails with an
// exception, which must not pass through foreign frames.
void claim(bool holds, const char *what);
// The same for two texts, which are shown if they differ.
void claimSame(const QString &actual, const QString &expected, const char *what);
void claimSame(const QByteArray &actual, const QByteArray &expected, const char *what);

// Splits an input into several texts. Each call returns the part before the next separator, a byte that does
// not occur in UTF-8.
class Pieces {
public:
    static constexpr char separator = '\xFF';

    explicit Pieces(const QByteArray &bytes)
        : m_rest(bytes) {}
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }
    QByteArray next();
    QString nextText() { return QString::fromUtf8(next()); }
    // The next byte; 0 at the end.
    quint8 nextByte();
    [[nodiscard]] QByteArray rest() const { return m_rest.toByteArray(); }

private:
    QByteArrayView m_rest;
};

} // namespace fuzz
