#include "platform/services/bus/NotificationSignal.h"

#include <QStringDecoder>
#include <algorithm>
#include <cstring>

namespace platform {

namespace {

constexpr const char *objectPath = "/com/parlo/DistributedNotifications";
constexpr const char *interfaceName = "com.parlo.DistributedNotifications";
constexpr const char *memberName = "Posted";
constexpr const char *signature = "ssa{ss}";

QByteArray carried(const QString &text) {
    return carriedText(text).toUtf8();
}

QString textOf(const char *utf8) {
    // Keeps a byte order mark at the beginning as a character.
    QStringDecoder decoder(QStringDecoder::Utf8,
                           QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    return decoder(QByteArrayView(utf8));
}

int appendUserInfo(sd_bus_message *message, const TextMap &userInfo) {
    int result = sd_bus_message_open_container(message, 'a', "{ss}");
    for (auto entry = userInfo.cbegin(); entry != userInfo.cend() && result >= 0; ++entry)
        result = sd_bus_message_append(message, "{ss}", carried(entry.key()).constData(),
                                       carried(entry.value()).constData());
    return result < 0 ? result : sd_bus_message_close_container(message);
}

bool readUserInfo(sd_bus_message *message, TextMap *userInfo) {
    if (sd_bus_message_enter_container(message, 'a', "{ss}") < 0)
        return false;
    const char *key = nullptr;
    const char *value = nullptr;
    int read = 0;
    while ((read = sd_bus_message_read(message, "{ss}", &key, &value)) > 0)
        userInfo->insert(textOf(key), textOf(value));
    return read == 0;
}

bool isPosted(sd_bus_message *message) {
    const char *path = sd_bus_message_get_path(message);
    return sd_bus_message_is_signal(message, interfaceName, memberName) > 0 && path &&
           std::strcmp(path, objectPath) == 0 && sd_bus_message_has_signature(message, signature) > 0;
}

// Whether the text needs no quoting inside a match rule.
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
        result =
            sd_bus_message_append(*message, "ss", carried(name).constData(), carried(sender).constData());
    return result < 0 ? result : appendUserInfo(*message, userInfo);
}

bool readNotificationSignal(sd_bus_message *message, QString *name, TextMap *userInfo) {
    const char *readName = nullptr;
    const char *sender = nullptr;
    TextMap readInfo;
    if (!isPosted(message) || sd_bus_message_read(message, "ss", &readName, &sender) <= 0 ||
        !readUserInfo(message, &readInfo))
        return false;
    *name = textOf(readName);
    *userInfo = readInfo;
    return true;
}

QByteArray notificationMatchRule(const QString &name) {
    QByteArray rule = QByteArrayLiteral("type='signal',path='") + objectPath + "',interface='" +
                      interfaceName + "',member='" + memberName + '\'';
    // The daemon compares argument 0 itself, so that no program wakes up for names that it does not observe.
    if (isPlain(name))
        rule += ",arg0='" + name.toLatin1() + '\'';
    return rule;
}

} // namespace platform
