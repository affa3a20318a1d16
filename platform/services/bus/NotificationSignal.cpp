#include "platform/services/bus/NotificationSignal.h"

#include "platform/services/bus/NotificationLimits.h"

#include <QStringDecoder>
#include <algorithm>
#include <cstring>

namespace platform {

namespace {

constexpr const char *objectPath = "/com/parlo/DistributedNotifications";
constexpr const char *interfaceName = "com.parlo.DistributedNotifications";
constexpr const char *memberName = "Posted";
constexpr const char *signature = "ssa{ss}";

int appendText(sd_bus_message *message, const QString &text) {
    return sd_bus_message_append_basic(message, 's', carriedText(text).toUtf8().constData());
}

int appendEntry(sd_bus_message *message, const QString &key, const QString &value) {
    int result = sd_bus_message_open_container(message, 'e', "ss");
    if (result >= 0)
        result = appendText(message, key);
    if (result >= 0)
        result = appendText(message, value);
    return result < 0 ? result : sd_bus_message_close_container(message);
}

int appendUserInfo(sd_bus_message *message, const TextMap &userInfo) {
    int result = sd_bus_message_open_container(message, 'a', "{ss}");
    for (auto entry = userInfo.cbegin(); entry != userInfo.cend() && result >= 0; ++entry)
        result = appendEntry(message, entry.key(), entry.value());
    return result < 0 ? result : sd_bus_message_close_container(message);
}

bool readText(sd_bus_message *message, QString *text) {
    const char *bytes = nullptr;
    if (sd_bus_message_read_basic(message, 's', &bytes) <= 0 || !bytes)
        return false;
    // A byte order mark at its beginning is a character like any other.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    *text = decoder(QByteArrayView(bytes, qsizetype(std::strlen(bytes))));
    return true;
}

bool readUserInfo(sd_bus_message *message, TextMap *userInfo) {
    if (sd_bus_message_enter_container(message, 'a', "{ss}") < 0)
        return false;
    int entered = 0;
    while ((entered = sd_bus_message_enter_container(message, 'e', "ss")) > 0) {
        QString key;
        QString value;
        if (!readText(message, &key) || !readText(message, &value) ||
            sd_bus_message_exit_container(message) < 0)
            return false;
        userInfo->insert(key, value);
    }
    return entered == 0;
}

bool isPosted(sd_bus_message *message) {
    const char *path = sd_bus_message_get_path(message);
    return sd_bus_message_is_signal(message, interfaceName, memberName) > 0 && path &&
           std::strcmp(path, objectPath) == 0 && sd_bus_message_has_signature(message, signature) > 0;
}

// Texts that need no quoting inside a match rule.
bool isPlain(const QString &text) {
    return std::all_of(text.cbegin(), text.cend(), [](QChar unit) {
        return unit >= u' ' && unit < u'\x7f' && unit != u'\'' && unit != u'\\';
    });
}

} // namespace

int makeNotificationSignal(sd_bus *bus, const QString &name, const QString &sender, const TextMap &userInfo,
                           sd_bus_message **message) {
    int result = sd_bus_message_new_signal(bus, message, objectPath, interfaceName, memberName);
    if (result >= 0)
        result = sd_bus_message_set_auto_start(*message, 0);
    if (result >= 0)
        result = appendText(*message, name);
    if (result >= 0)
        result = appendText(*message, sender);
    return result < 0 ? result : appendUserInfo(*message, userInfo);
}

bool readNotificationSignal(sd_bus_message *message, QString *name, TextMap *userInfo) {
    QString readName;
    QString sender;
    TextMap readInfo;
    if (!isPosted(message) || !readText(message, &readName) || !readText(message, &sender) ||
        !readUserInfo(message, &readInfo))
        return false;
    *name = readName;
    *userInfo = readInfo;
    return true;
}

QByteArray notificationMatchRule(const QString &name) {
    QByteArray rule = QByteArrayLiteral("type='signal',path='") + objectPath + "',interface='" +
                      interfaceName + "',member='" + memberName + '\'';
    // The daemon compares argument 0 itself, so that nobody is woken for names that he does not observe.
    if (isPlain(name))
        rule += ",arg0='" + name.toLatin1() + '\'';
    return rule;
}

} // namespace platform
