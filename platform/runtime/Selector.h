// Interned selectors, the names of methods.
#pragma once

#include <QHashFunctions>
#include <QString>
#include <cstdint>

namespace rt {

namespace detail {
constexpr std::uint32_t cachePlaces = 64; // of each class's cache of methods; a power of two
struct SelectorEntry {
    QString name;
    int argumentCount;        // number of ':' in the name
    std::uint32_t cachePlace; // below cachePlaces
};
} // namespace detail

// A handle to an interned name. Copying is free; two selectors are equal exactly when their names are.
// Handles live as long as the process. Main thread only, like the whole runtime.
class Selector {
public:
    // The selector that no method has.
    constexpr Selector() = default;
    // Interns the name. An empty or null name gives the null selector.
    explicit Selector(const QString &name);
    Selector(const char *name);

    [[nodiscard]] bool isNull() const { return m_entry == nullptr; }
    // The name with its colons; empty for the null selector.
    [[nodiscard]] QString name() const;
    // How many arguments a call takes: one for each colon.
    [[nodiscard]] int argumentCount() const { return m_entry ? m_entry->argumentCount : 0; }
    // The place of this selector's method in the cache of a class.
    [[nodiscard]] std::uint32_t cachePlace() const { return m_entry ? m_entry->cachePlace : 0; }

    friend bool operator==(Selector a, Selector b) { return a.m_entry == b.m_entry; }
    friend std::size_t qHash(Selector s, std::size_t seed = 0) { return ::qHash(s.m_entry, seed); }

private:
    const detail::SelectorEntry *m_entry = nullptr;
};

} // namespace rt
