#include "tests/fuzz/FuzzTarget.h"

namespace fuzz {

std::vector<FuzzTarget> &fuzzTargets() {
    static auto *all = new std::vector<FuzzTarget>;
    return *all;
}

void claimSame(const QByteArray &actual, const QByteArray &expected, const char *what) {
    if (actual == expected)
        return;
    std::fprintf(stderr, "is: %s\nshould be: %s\n", actual.toPercentEncoding(" <>=\"/:;").constData(),
                 expected.toPercentEncoding(" <>=\"/:;").constData());
    claim(false, what);
}

void claimSame(const QString &actual, const QString &expected, const char *what) {
    if (actual != expected)
        claimSame(actual.toUtf8(), expected.toUtf8(), what);
    claim(actual == expected, what); // they may differ in what UTF-8 cannot express
}

QByteArray Pieces::next() {
    const qsizetype end = m_rest.indexOf(separator);
    const QByteArrayView piece = end < 0 ? m_rest : m_rest.first(end);
    m_rest = end < 0 ? QByteArrayView() : m_rest.sliced(end + 1);
    return piece.toByteArray();
}

quint8 Pieces::nextByte() {
    if (m_rest.isEmpty())
        return 0;
    const auto byte = quint8(m_rest.front());
    m_rest = m_rest.sliced(1);
    return byte;
}

} // namespace fuzz
