#include "platform/services/BinaryPropertyList.h"

#include "platform/services/BinaryPropertyListGuard.h"

#include <QDateTime>
#include <QTimeZone>
#include <cstdlib>
#include <memory>
#include <plist/plist.h>

namespace platform {

namespace {

struct Free {
    void operator()(void *node) const { plist_free(node); }
};
using Node = std::unique_ptr<void, Free>;

struct FreeMemory {
    void operator()(void *memory) const { std::free(memory); }
};

rt::Value valueOf(plist_t node);

// Each getter below is called for its own node type only: for another it leaves its out parameter as it was.

QString textOf(plist_t node) {
    uint64_t length = 0;
    const char *text = plist_get_string_ptr(node, &length);
    return text ? QString::fromUtf8(text, qsizetype(length)) : QString(QLatin1String(""));
}

QByteArray dataOf(plist_t node) {
    uint64_t length = 0;
    const char *data = plist_get_data_ptr(node, &length);
    return {data, qsizetype(length)};
}

QDateTime dateOf(plist_t node) {
    constexpr qint64 secondsFrom1970To2001 = 978307200;
    int32_t seconds = 0;
    int32_t microseconds = 0;
    plist_get_date_val(node, &seconds, &microseconds);
    return QDateTime::fromMSecsSinceEpoch((secondsFrom1970To2001 + seconds) * 1000 + microseconds / 1000,
                                          Qt::UTC);
}

QVariantMap dictionaryOf(plist_t node) {
    QVariantMap entries;
    plist_dict_iter iterator = nullptr;
    plist_dict_new_iter(node, &iterator);
    const std::unique_ptr<void, FreeMemory> iteratorOwner(iterator);
    while (iterator) {
        char *key = nullptr;
        plist_t member = nullptr;
        plist_dict_next_item(node, iterator, &key, &member);
        const std::unique_ptr<char, FreeMemory> keyOwner(key);
        if (!key || !member)
            break;
        const rt::Value value = valueOf(member);
        if (value.isValid())
            entries.insert(QString::fromUtf8(key), value);
    }
    return entries;
}

QVariantList arrayOf(plist_t node) {
    QVariantList items;
    plist_array_iter iterator = nullptr;
    plist_array_new_iter(node, &iterator);
    const std::unique_ptr<void, FreeMemory> iteratorOwner(iterator);
    while (iterator) {
        plist_t member = nullptr;
        plist_array_next_item(node, iterator, &member);
        if (!member)
            break;
        const rt::Value value = valueOf(member);
        if (value.isValid())
            items.append(value);
    }
    return items;
}

rt::Value numberOf(plist_t node, plist_type type) {
    if (type == PLIST_BOOLEAN) {
        uint8_t flag = 0;
        plist_get_bool_val(node, &flag);
        return flag != 0;
    }
    if (type == PLIST_REAL) {
        double real = 0;
        plist_get_real_val(node, &real);
        return real;
    }
    uint64_t integer = 0; // negative numbers come as their two's complement
    plist_get_uint_val(node, &integer);
    return qint64(integer);
}

rt::Value valueOf(plist_t node) {
    const plist_type type = plist_get_node_type(node);
    switch (type) {
    case PLIST_DICT:
        return dictionaryOf(node);
    case PLIST_ARRAY:
        return arrayOf(node);
    case PLIST_STRING:
        return textOf(node);
    case PLIST_DATA:
        return dataOf(node);
    case PLIST_DATE:
        return dateOf(node);
    case PLIST_BOOLEAN:
    case PLIST_UINT:
    case PLIST_REAL:
        return numberOf(node, type);
    default:
        return {}; // kinds that only archives hold
    }
}

} // namespace

bool isBinaryPropertyList(const QByteArray &bytes) {
    return bytes.startsWith("bplist00");
}

rt::Value fromBinaryPropertyList(const QByteArray &bytes) {
    // Deep nesting ends the process inside the parser, and it copies a shared object for each use.
    if (!isHarmlessBinaryPropertyList(bytes))
        return {};
    plist_t root = nullptr;
    plist_from_bin(bytes.constData(), uint32_t(bytes.size()), &root);
    const Node owner(root);
    return root ? valueOf(root) : rt::Value();
}

} // namespace platform
