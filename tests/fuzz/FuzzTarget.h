// A target: one way by which bytes that somebody else made come in. The fuzzer and the test of the corpora
// open the same targets.
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <functional>
#include <vector>

namespace fuzz {

struct FuzzTarget {
    const char *name; // of its corpus' folder as well
    std::function<void(const QByteArray &bytes)> open;
};

// All targets that are linked into the program.
[[nodiscard]] std::vector<FuzzTarget> &fuzzTargets();

// A static one of these in a file adds its target.
struct AddFuzzTarget {
    AddFuzzTarget(const char *name, void (*open)(const QByteArray &bytes)) {
        fuzzTargets().push_back({name, open});
    }
};

// What must hold for every input. A claim that does not ends the fuzzer, and fails the test with an
// exception, which must not pass through foreign frames.
void claim(bool holds, const char *what);
// The same for two texts, which are shown when they differ.
void claimSame(const QString &actual, const QString &expected, const char *what);
void claimSame(const QByteArray &actual, const QByteArray &expected, const char *what);

// The value is written and read again, which changes nothing that the format can hold.
template<typename Value, typename Write, typename Read>
void claimRoundTrip(const Value &value, Write write, Read read, bool isExact) {
    const QByteArray written = write(value);
    const Value again = read(written);
    claim(!isExact || again == value, "what is written reads as before");
    claimSame(QByteArray(write(again)), written, "and is then written as before");
}

// Input that is made of several texts: each call takes what stands before the next separator, a byte that no
// UTF-8 has.
class Pieces {
public:
    static constexpr char separator = '\xFF';

    explicit Pieces(const QByteArray &bytes)
        : m_rest(bytes) {}
    [[nodiscard]] bool atEnd() const { return m_rest.isEmpty(); }
    QByteArray next();
    QString nextText() { return QString::fromUtf8(next()); }
    // One byte, 0 when there is none.
    quint8 nextByte();
    [[nodiscard]] QByteArray rest() const { return m_rest.toByteArray(); }

private:
    QByteArrayView m_rest;
};

} // namespace fuzz
