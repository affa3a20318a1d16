#include "tests/mailhoststore/StoreFixture.h"

#include "standin/mailhost/store/ConferenceLink.h"

using namespace mailhost;

namespace {

const QString one = u"one"_s;
const QByteArray ownHead = "CONFERENCE;VALUE=URI;FEATURE=AUDIO,VIDEO;LABEL=\"Join the meeting\";"
                           "X-PARLO-LINK=LOCATION:";

class ConferenceTest : public StoreTest {
protected:
    // Our line of the only appointment, unfolded; empty when there is none.
    QByteArray ownLine(CalendarFile &file) const {
        for (const QByteArray &line : unfolded(saved(file)).split('\n')) {
            if (line.startsWith("CONFERENCE") && line.contains("X-PARLO-LINK"))
                return line.trimmed();
        }
        return {};
    }
    static void store(CalendarFile &file, const QString &location, const QString &record = QString()) {
        Appointment changed = *file.find(one);
        changed.location = location;
        changed.ucCapabilities = record;
        ASSERT_TRUE(file.update(changed));
    }
};

} // namespace

TEST_F(ConferenceTest, TheLinkIsFoundInTheLocationAndCannotBreakItsLine) {
    const QString head = u"https://m.example/"_s;
    const QString map = u"https://map.example/7"_s;
    const struct {
        QString location;
        QByteArray uri;  // empty: no line
        QString joinUrl; // of the record; counts if the location holds it
    } cases[] = {
        {head + u"j/1;jsessionid=2,3; Room 7"_s, "https://m.example/j/1;jsessionid=2,3", {}},
        {u"(see "_s + head + u"j/1)"_s, "https://m.example/j/1", {}},
        {u"HTTPS://m.example/j?a=%7B%0D%0A"_s, "https://m.example/j?a=%7B%0D%0A", {}},
        {head + QString::fromUtf8("zwölf/🥐?q=ß"),
         "https://m.example/zw%C3%B6lf/%F0%9F%A5%90?q=%C3%9F",
         {}},
        {head + u"a\nX-EVIL:1"_s, "https://m.example/a", {}},
        {head + QString(10000, u'a') + u" https://n.example/2"_s, "https://n.example/2", {}},
        {u"http://m.example/j/1"_s, "", {}},
        {map + u' ' + head, "https://m.example/", head},
        {map + u" http://m.example/j/1"_s, "http://m.example/j/1", u"http://m.example/j/1"_s},
        {u"javascript:alert(1)"_s, "", u"javascript:alert(1)"_s},
    };
    for (const auto &test : cases) {
        SCOPED_TRACE(qPrintable(test.location.left(60)));
        auto file = openedEvent("DTSTART:20260309T090000Z");
        store(*file, test.location, u"{\"joinUrl\":\"%1\"}"_s.arg(test.joinUrl));
        EXPECT_EQ(ownLine(*file), test.uri.isEmpty() ? QByteArray() : ownHead + test.uri);
        const QByteArray text = saved(*file);
        EXPECT_FALSE(text.contains("\nX-EVIL"));
        EXPECT_EQ(opened(text)->find(one)->location, test.location);
    }
}

TEST_F(ConferenceTest, OurLineFollowsTheLocationAndLeavesOthersAlone) {
    const QByteArray theirs = "CONFERENCE;value=uri;FEATURE=PHONE:tel:+1-412-555-0123\\,\\,654321\r\n"
                              "conference;LABEL=Theirs:https://them.example/ä\r\n";
    auto file = openedEvent("DTSTART:20260309T090000Z\r\n" + theirs + "SUMMARY:a");
    store(*file, u"https://m.example/1"_s);
    EXPECT_TRUE(saved(*file).contains(theirs));
    // Somebody gives it another label, and other parameters.
    file = opened(unfolded(saved(*file)).replace("\"Join the meeting\"", "\"Hinein; jetzt\";X-MORE=1"));
    store(*file, u"https://m.example/2"_s);
    EXPECT_EQ(ownLine(*file),
              QByteArray(ownHead).replace("\"Join the meeting\"", "\"Hinein; jetzt\";X-MORE=1") +
                  "https://m.example/2");
    store(*file, QString::fromUtf8("https://them.example/ä"));
    EXPECT_EQ(ownLine(*file), "") << "they offer it already";
    store(*file, u"https://m.example/1"_s);
    EXPECT_NE(ownLine(*file), "");
    store(*file, QString());
    EXPECT_EQ(ownLine(*file), "");
    EXPECT_TRUE(saved(*file).contains(theirs));
}

TEST_F(ConferenceTest, TheRecordsLinkIsOpenedBeforeThatOfTheFileAndThatBeforeTheLocations) {
    auto file = openedEvent("DTSTART:20260309T090000Z\r\nCONFERENCE:tel:+1-412-555\r\n"
                            "CONFERENCE;LABEL=Theirs:https://them.example/9\r\nSUMMARY:a");
    const QString theirs = file->conferenceLink(one, {});
    EXPECT_EQ(theirs, u"https://them.example/9"_s);
    const QString record = uR"({"joinUrl":"https://m.example/1"})"_s;
    EXPECT_EQ(linkToOpen(u"Hall; https://m.example/1"_s, record, theirs), u"https://m.example/1"_s);
    EXPECT_EQ(linkToOpen(u"https://m.example/2"_s, record, theirs), theirs);
    EXPECT_EQ(linkToOpen(u"https://m.example/2"_s, record, {}), u"https://m.example/2"_s);
    for (const QString &refused : {u"ftp://m.example/1"_s, u"http://m.example/1"_s,
                                   u"https://good.example@m.example/1"_s, u"Room https://"_s})
        EXPECT_EQ(linkToOpen(refused, uR"({"joinUrl":"%1"})"_s.arg(refused), {}), QString());
}
