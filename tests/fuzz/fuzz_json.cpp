// JSON, and the record of a meeting in an appointment, which is JSON in a private property of a calendar
// file.
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "standin/mailhost/store/TextValue.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;

namespace {

// Halves of characters, which only escapes can name, are not written; and the toolkit takes a byte order mark
// at the beginning of a text for none of its characters, unless something in the text is escaped.
bool isReadOtherwise(const QByteArray &json) {
    const QByteArray lower = json.toLower();
    return lower.contains("\\ud") || lower.contains("\\ufeff") || json.contains("\xef\xbb\xbf");
}

void claimWrittenAsRead(const rt::Value &value, bool isExact) {
    const bool isContainer =
        value.typeId() == QMetaType::QVariantMap || value.typeId() == QMetaType::QVariantList;
    const QByteArray json = vlOLUtils::toJSONData(value);
    claim(isContainer != json.isNull(), "dictionaries and arrays, and nothing else, are written");
    if (!isContainer)
        return;
    if (isExact)
        claimRoundTrip(value, vlOLUtils::toJSONData, vlOLUtils::toArrayOrNSDictionaryWithData, true);
    claimSame(vlOLUtils::toJSONString(value).toUtf8(), json, "as text it is the same");
}

void claimRecord(const QString &text) {
    const QVariantMap record = vlOLUtils::toNSDictionary(text);
    vlMeetingDataMgr &data = vlMeetingDataMgr::sharedInstance();
    data.clearSavedMeetingData();
    data.setMeetingKey(rt::textValue(record.value(vl_OLProperty_MeetingKey)));
    data.setSavedApptInfo({{vl_ApptInfo_VlOIProperty, text}});
    claimSame(data.getOldJoinUrl(), rt::textValue(record.value(vl_Meeting_JoinUrl)),
              "the join link is that of the record");
    data.clearSavedMeetingData();
}

// Every text is read from the file exactly as it was written.
void claimKeptInFile(const QString &text) {
    mailhost::ContentLine line = mailhost::ContentLine::make("X-RECORD", "old", "\r\n");
    mailhost::writeRecord(line, text);
    claimSame(mailhost::readRecord(line), text, "a record comes back to the letter");
    const mailhost::ContentLine read(line.source());
    claimSame(mailhost::readRecord(read), text, "a record comes back from the file to the letter");
}

void open(const QByteArray &bytes) {
    claimWrittenAsRead(vlOLUtils::toArrayOrNSDictionaryWithData(bytes), !isReadOtherwise(bytes));
    const QString text = QString::fromUtf8(bytes);
    claimRecord(text);
    claimKeptInFile(text);
    // Any units, half characters among them.
    claimKeptInFile(QString(reinterpret_cast<const QChar *>(bytes.constData()), bytes.size() / 2));
}

const AddFuzzTarget target("json", open);

} // namespace
