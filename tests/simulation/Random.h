// Random numbers that are the same on every machine and with every library.
#pragma once

#include <QStringList>
#include <QtGlobal>

namespace simulation {

class Random {
public:
    explicit Random(quint64 seed)
        : m_state(seed) {}

    // From 0 up to, not including, `sides` (at least 1).
    int below(int sides) { return int(next() % quint64(sides)); }
    bool chance(int percent) { return below(100) < percent; }
    QString oneOf(const QStringList &list) { return list[below(int(list.size()))]; }

private:
    // SplitMix64.
    quint64 next() {
        m_state += 0x9e3779b97f4a7c15ULL;
        quint64 mixed = m_state;
        mixed = (mixed ^ (mixed >> 30)) * 0xbf58476d1ce4e5b9ULL;
        mixed = (mixed ^ (mixed >> 27)) * 0x94d049bb133111ebULL;
        return mixed ^ (mixed >> 31);
    }
    quint64 m_state;
};

} // namespace simulation
