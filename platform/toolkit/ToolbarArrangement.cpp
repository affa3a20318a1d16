#include "platform/toolkit/ToolbarArrangement.h"

#include "platform/services/Services.h"
#include "platform/toolkit/ToolbarItem.h"

#include <QHash>
#include <QSet>
#include <algorithm>

namespace platform {

namespace {

const QString keyItems = u"items"_s;
const QString keyDisplayMode = u"displayMode"_s;

// Indexed by mode; the first is the mode of a new tool-bar.
const QStringList modeNames{u"iconAndText"_s, u"icon"_s, u"text"_s};

ToolbarDisplayMode modeNamed(const QString &name) {
    return ToolbarDisplayMode(std::max(qsizetype(0), modeNames.indexOf(name)));
}

} // namespace

std::shared_ptr<ToolbarArrangement> ToolbarArrangement::shared(const QString &identifier) {
    static auto *arrangements = new QHash<QString, std::weak_ptr<ToolbarArrangement>>;
    std::shared_ptr<ToolbarArrangement> arrangement = arrangements->value(identifier).lock();
    if (!arrangement) {
        arrangement = std::make_shared<ToolbarArrangement>(identifier);
        arrangements->insert(identifier, arrangement);
    }
    return arrangement;
}

ToolbarArrangement::ToolbarArrangement(const QString &identifier)
    : m_identifier(identifier) {
    read();
}

QStringList ToolbarArrangement::cleaned(const QVariantList &list) {
    QStringList identifiers;
    QSet<QString> known;
    for (const QVariant &entry : list) {
        const QString identifier = rt::textValue(entry);
        if (identifier.isEmpty() || identifier.size() > maximumIdentifierLength)
            continue;
        if (!isStandardToolbarIdentifier(identifier) && known.contains(identifier))
            continue;
        known.insert(identifier);
        identifiers.append(identifier);
        if (identifiers.size() == maximumItems)
            break;
    }
    return identifiers;
}

void ToolbarArrangement::setIdentifiers(const QStringList &identifiers) {
    if (m_identifiers == identifiers)
        return;
    m_identifiers = identifiers;
    write();
}

void ToolbarArrangement::setDisplayMode(ToolbarDisplayMode mode) {
    if (m_displayMode == mode)
        return;
    m_displayMode = mode;
    write();
}

void ToolbarArrangement::forget() {
    m_identifiers.reset();
    m_displayMode = ToolbarDisplayMode::IconAndText;
    write();
}

QString ToolbarArrangement::key() const {
    return u"Toolbar "_s + m_identifier;
}

void ToolbarArrangement::read() {
    const QVariantMap stored = rt::mapValue(services().userDefaults->value(key()));
    const QVariant items = stored.value(keyItems);
    if (items.typeId() == QMetaType::QVariantList || items.typeId() == QMetaType::QStringList)
        m_identifiers = cleaned(items.toList());
    m_displayMode = modeNamed(rt::textValue(stored.value(keyDisplayMode)));
}

void ToolbarArrangement::write() {
    QVariantMap stored;
    if (m_identifiers)
        stored.insert(keyItems, QVariantList(m_identifiers->cbegin(), m_identifiers->cend()));
    if (m_displayMode != ToolbarDisplayMode::IconAndText)
        stored.insert(keyDisplayMode, modeNames[int(m_displayMode)]);
    services().userDefaults->setValue(key(), stored.isEmpty() ? rt::Value() : rt::Value(stored));
    services().userDefaults->synchronize();
    Q_EMIT changed();
}

} // namespace platform
