// JSON, and the record of a meeting, which is JSON in a private property of a calendar file.
#include "plugin/link/meetingKeys.h"
#include "plugin/util/vlOLUtils.h"
#include "plugin/workflow/vlMeetingDataMgr.h"
#include "standin/mailhost/store/TextValue.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;

namespace {

// Whether reading may give another value the second time: a lone surrogate (which needs an escape) is not
// written, and the toolkit drops a byte order mark at the beginning of a text without escapes.
bool readsDifferently(const QByteArray &json) {
    const QByteArray lower = json.toLower();
    return lower.contains("\\ud") || lower.contains("\\ufeff") || json.contains("\xef\xbb\xbf");
}

void claimWrittenAsRead(const rt::Value &value, bool isExact) {
    const bool isContainer =
        value.typeId() == QMetaType::QVariantMap || value.typeId() == QMetaType::QVariantList;
    const QByteArray json = vlOLUtils::toJSONData(value);
    claim(isContainer != json.isNull(), "only dictionaries and arrays are written");
    if (!isContainer)
        return;
    if (isExact)
        claim(vlOLUtils::toArrayOrNSDictionaryWithData(json) == value, "a written value reads as before");
    claimSame(vlOLUtils::toJSONString(value).toUtf8(), json, "the text has the same bytes");
}

void claimRecord(const QString &text) {
    const QVariantMap record = vlOLUtils::toNSDictionary(text);
    vlMeetingDataMgr &data = vlMeetingDataMgr::sharedInstance();
    data.clearSavedMeetingData();
    data.setMeetingKey(rt::textValue(record.value(vl_OLProperty_MeetingKey)));
    data.setSavedApptInfo({{vl_ApptInfo_VlOIProperty, text}});
    claimSame(data.getOldJoinUrl(), rt::textValue(record.value(vl_Meeting_JoinUrl)),
              "the join link comes from the record");
    data.clearSavedMeetingData();
}

// A text is read from the file exactly as it was written.
void claimKeptInFile(const QString &text) {
    mailhost::ContentLine line = mailhost::ContentLine::make("X-RECORD", "old", "\r\n");
    mailhost::writeRecord(line, text);
    claimSame(mailhost::readRecord(line), text, "a record comes back unchanged");
    const mailhost::ContentLine read(line.source());
    claimSame(mailhost::readRecord(read), text, "a record comes back unchanged from the file");
}

void open(const QByteArray &bytes) {
    claimWrittenAsRead(vlOLUtils::toArrayOrNSDictionaryWithData(bytes), !readsDifferently(bytes));
    const QString text = QString::fromUtf8(bytes);
    claimRecord(text);
    claimKeptInFile(text);
    // Any UTF-16 units, lone surrogates included.
    claimKeptInFile(QString(reinterpret_cast<const QChar *>(bytes.constData()), bytes.size() / 2));
}

const AddFuzzTarget target("json", open);

} // namespace
