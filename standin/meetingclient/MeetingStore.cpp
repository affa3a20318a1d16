#include "standin/meetingclient/MeetingStore.h"

#include "platform/Literals.h"
#include "platform/services/storage/WholeFile.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>

static void initializeResource() { // not possible inside of a namespace
    Q_INIT_RESOURCE(data);
}

namespace meetingclient {

namespace {

const QString keySignedIn = u"signedIn"_s;
const QString keyProfile = u"profile"_s;
const QString keyMeetings = u"meetings"_s;
const QString keyAccounts = u"accounts"_s;
const QString keyNextNumber = u"nextNumber"_s;

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
    const QJsonDocument document = QJsonDocument::fromJson(file.readAll());
    file.close();
    if (!document.isObject() || !document.object().value(keyMeetings).isObject()) {
        const QString aside = freeName(m_path);
        QFile::rename(m_path, aside);
        m_lastError = u"The meetings file was damaged. It is kept as %1; a new one was begun."_s.arg(aside);
        return;
    }
    const QJsonObject read = document.object();
    for (auto it = read.begin(); it != read.end(); ++it)
        m_root.insert(it.key(), it.value());
}

void MeetingStore::save() {
    if (m_path.isEmpty())
        return;
    QDir().mkpath(QFileInfo(m_path).path());
    QString reason;
    if (platform::writeWholeFile(m_path, QJsonDocument(m_root).toJson(), &reason))
        m_lastError.clear();
    else
        m_lastError = u"The meetings file %1 cannot be written: %2"_s.arg(m_path, reason);
}

bool MeetingStore::signedIn() const {
    return m_root.value(keySignedIn).toBool();
}

void MeetingStore::setSignedIn(bool signedIn) {
    m_root.insert(keySignedIn, signedIn);
    save();
}

QJsonObject MeetingStore::profile() const {
    return m_root.value(keyProfile).toObject();
}

void MeetingStore::setProfile(const QJsonObject &profile) {
    m_root.insert(keyProfile, profile);
    save();
}

QJsonArray MeetingStore::accounts() const {
    return m_root.value(keyAccounts).toArray();
}

void MeetingStore::setAccounts(const QJsonArray &accounts) {
    m_root.insert(keyAccounts, accounts);
    save();
}

QJsonObject MeetingStore::meetings() const {
    return m_root.value(keyMeetings).toObject();
}

std::optional<QJsonObject> MeetingStore::meeting(const QString &key) const {
    const QJsonValue value = meetings().value(key);
    if (!value.isObject())
        return std::nullopt;
    return value.toObject();
}

QString MeetingStore::addMeeting(QJsonObject meeting) {
    const qint64 number = m_root.value(keyNextNumber).toInteger(840000017);
    m_root.insert(keyNextNumber, number + 7919); // far enough apart that one key is not read as another
    const QString key = QString::number(number);
    meeting.insert(u"meetingKey"_s, key);
    replaceMeeting(key, meeting);
    return key;
}

void MeetingStore::replaceMeeting(const QString &key, const QJsonObject &meeting) {
    QJsonObject all = meetings();
    all.insert(key, meeting);
    m_root.insert(keyMeetings, all);
    save();
}

bool MeetingStore::removeMeeting(const QString &key) {
    QJsonObject all = meetings();
    if (!all.contains(key))
        return false;
    all.remove(key);
    m_root.insert(keyMeetings, all);
    save();
    return true;
}

} // namespace meetingclient
