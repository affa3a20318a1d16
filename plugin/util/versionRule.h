// Compares dotted versions numerically.
#pragma once

#include <QString>
#include <compare>

// The first three components; a missing one counts as 0.
struct DottedVersion {
    qint64 major = 0;
    qint64 minor = 0;
    qint64 build = 0;
    // NOLINTNEXTLINE(modernize-use-nullptr): the linter takes the 0 of a comparison for a pointer
    friend auto operator<=>(const DottedVersion &, const DottedVersion &) = default;
};

[[nodiscard]] DottedVersion parseDottedVersion(const QString &text);
// False for a null or empty text, which stands for an unknown version.
[[nodiscard]] bool isVersionAtLeast(const QString &text, const DottedVersion &reference);
