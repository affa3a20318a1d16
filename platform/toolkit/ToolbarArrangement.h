// The items of the tool-bars of one kind, their order and their display mode.
#pragma once

#include <QObject>
#include <QStringList>
#include <memory>
#include <optional>

namespace platform {

enum class ToolbarDisplayMode { IconAndText, IconOnly, TextOnly };

// Shared by all tool-bars of an identifier and kept in the user's defaults, as a dictionary under "Toolbar
// <identifier>": "items" (texts) and "displayMode" ("iconAndText", "icon", "text"). Changes are written at
// once. Stored values are not trusted: entries that are not identifiers, duplicates and entries beyond the
// limit are left out.
class ToolbarArrangement : public QObject {
    Q_OBJECT
public:
    static constexpr int maximumItems = 200;
    static constexpr int maximumIdentifierLength = 200; // UTF-16 units

    // The arrangement of that identifier; read again if no tool-bar uses it.
    static std::shared_ptr<ToolbarArrangement> shared(const QString &identifier);
    explicit ToolbarArrangement(const QString &identifier);

    // No value: nothing is stored and the delegate's default applies.
    [[nodiscard]] const std::optional<QStringList> &identifiers() const { return m_identifiers; }
    void setIdentifiers(const QStringList &identifiers);
    [[nodiscard]] ToolbarDisplayMode displayMode() const { return m_displayMode; }
    void setDisplayMode(ToolbarDisplayMode mode);
    void forget(); // items and display mode

    // The valid identifiers of a list.
    [[nodiscard]] static QStringList cleaned(const QVariantList &list);

Q_SIGNALS:
    void changed();

private:
    void read();
    void write();
    [[nodiscard]] QString key() const;

    QString m_identifier;
    std::optional<QStringList> m_identifiers;
    ToolbarDisplayMode m_displayMode = ToolbarDisplayMode::IconAndText;
};

} // namespace platform
