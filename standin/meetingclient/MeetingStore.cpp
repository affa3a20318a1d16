#include "standin/meetingclient/MeetingStore.h"

#include "platform/services/storage/WholeFile.h"

#include <QDir>
#include <QFileInfo>
#include <QJsonDocument>

static void initializeResource() { // not possible inside of a namespace
    Q_INIT_RESOURCE(data);
}

namespace meetingclient {

namespace {

const QString nextNumberKey = u"nextNumber"_s;

QString freeName(const QString &path) {
    for (int n = 1;; ++n) {
        const QString name = u"%1.broken-%2"_s.arg(path).arg(n);
        if (!QFileInfo::exists(name))
            return name;
    }
}

} // namespace

QJsonObject builtInData(const QString &name) {
    initializeResource();
    QFile file(u":/meetingclient/"_s + name);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object() : QJsonObject();
}

MeetingStore::MeetingStore(QString path)
    : m_path(std::move(path))
    , m_root(builtInData(u"fresh.json"_s)) {
    load();
}

void MeetingStore::load() {
    QFile file(m_path);
    if (m_path.isEmpty() || !file.exists())
        return;
    if (!file.open(QIODevice::ReadOnly)) {
        m_lastError = u"The meetings file %1 cannot be read. Check its permissions."_s.arg(m_path);
        m_path.clear(); // an unreadable file is not overwritten
        return;
    }
    const QJsonObject read = QJsonDocument::fromJson(file.readAll()).object();
    if (!read[meetingsKey].isObject()) {
        const QString aside = freeName(m_path);
        file.rename(aside);
        m_lastError = u"The meetings file was damaged. It is kept as %1; a new one was begun."_s.arg(aside);
        return;
    }
    for (auto it = read.begin(); it != read.end(); ++it)
        m_root.insert(it.key(), it.value());
}

void MeetingStore::set(const QString &key, const QJsonValue &value) {
    m_root.insert(key, value);
    if (m_path.isEmpty())
        return;
    QDir().mkpath(QFileInfo(m_path).path());
    QString reason;
    if (platform::writeWholeFile(m_path, QJsonDocument(m_root).toJson(), &reason))
        m_lastError.clear();
    else
        m_lastError = u"The meetings file %1 cannot be written: %2"_s.arg(m_path, reason);
}

std::optional<QJsonObject> MeetingStore::meeting(const QString &key) const {
    const QJsonValue value = meetings().value(key);
    return value.isObject() ? std::optional(value.toObject()) : std::nullopt;
}

QString MeetingStore::addMeeting(QJsonObject meeting) {
    const qint64 number = m_root.value(nextNumberKey).toInteger(840000017);
    m_root.insert(nextNumberKey, number + 7919); // far enough apart that one key is not read as another
    const QString key = QString::number(number);
    meeting.insert(u"meetingKey"_s, key);
    replaceMeeting(key, meeting);
    return key;
}

void MeetingStore::replaceMeeting(const QString &key, const QJsonObject &meeting) {
    QJsonObject all = meetings();
    all.insert(key, meeting);
    set(meetingsKey, all);
}

bool MeetingStore::removeMeeting(const QString &key) {
    QJsonObject all = meetings();
    if (!all.contains(key))
        return false;
    all.remove(key);
    set(meetingsKey, all);
    return true;
}

} // namespace meetingclient
