// Audio-conference accounts with many numbers, and appointments with many attendees.
#include "bench/table/Rows.h"
#include "bench/table/Sections.h"
#include "bench/table/SideBySide.h"
#include "meeting.pb.h"
#include "platform/runtime/Runtime.h"
#include "plugin/host/adapters/vlECCalendarEvent.h"
#include "plugin/link/readers/vlGetPACHelper.h"
#include "plugin/proto/vlProtoBufConvert.h"
#include "tests/support/TestServices.h"

#include <QTemporaryDir>

namespace bench {

namespace {

using com::brindle::webapp::proto::PACMeeting;
using com::brindle::webapp::proto::Response;

// Two accounts of so many numbers each.
QByteArray twoAccounts(int numbers) {
    Response response;
    response.set_unread_1(0);
    for (int account = 1; account <= 2; ++account) {
        PACMeeting *meeting = response.mutable_pac_info()->add_meetings();
        meeting->set_meeting_number(1'000'000'000LL * account);
        meeting->set_invitation_email("Dial in, then enter the number of the conference.");
        for (int i = 0; i < numbers; ++i) {
            auto *number = i % 2 ? meeting->add_toll_numbers() : meeting->add_toll_free_numbers();
            number->set_country("Country " + std::to_string(i));
            number->set_number("+1 555 " + std::to_string(1'000'000 * account + i));
        }
    }
    return QByteArray::fromStdString(response.SerializeAsString());
}

void parseOnce(const QByteArray &bytes) {
    Response response;
    if (!vlProtoBufConvert::ProtoFromByteStream(&response, bytes.constData(), int(bytes.size())))
        qFatal("the accounts do not parse");
    keep(response.pac_info().meetings_size());
}

void compareAccounts(int numbers) {
    const QByteArray bytes = twoAccounts(numbers);
    const vlGetPACHelper &helper = vlGetPACHelper::sharedInstance();
    vlGetPACHelper::sharedInstance().setPACInfo(QString::fromLatin1(bytes.toBase64()));
    const Comparison times =
        sideBySide({repeating([&] { keep(helper.pacMeetingID(2)); }), repeating([&] { parseOnce(bytes); })});
    addRow(u"an account's number, 2 accounts of %1 numbers"_s.arg(numbers), timeText(times.seconds[0]),
           u"one parse: "_s + timeText(times.seconds[1]), ratioText(times.ratios[1]), u"no parse"_s,
           times.ratios[1] < 0.5);
}

// An appointment of a host that answers at once, so that the plug-in's own work is measured.
class Guest final : public rt::Object {
public:
    Guest(rt::Class *cls, int number)
        : rt::Object(cls)
        , m_name(u"Guest %1"_s.arg(number))
        , m_address(u"guest%1@parlo.example"_s.arg(number)) {}
    static rt::Value name(rt::Object *self, rt::Selector, rt::Args) {
        return static_cast<Guest *>(self)->m_name;
    }
    static rt::Value address(rt::Object *self, rt::Selector, rt::Args) {
        return static_cast<Guest *>(self)->m_address;
    }
    static rt::Value type(rt::Object *, rt::Selector, rt::Args) { return 0; }

private:
    QString m_name, m_address;
};
class Appointment final : public rt::Object {
public:
    Appointment(rt::Class *cls, rt::Class *guests, int count)
        : rt::Object(cls) {
        for (int i = 0; i < count; ++i) {
            m_guests.push_back(std::make_unique<Guest>(guests, i));
            m_list.append(rt::fromObject(m_guests.back().get()));
        }
    }
    static rt::Value list(rt::Object *self, rt::Selector, rt::Args) {
        return static_cast<Appointment *>(self)->m_list;
    }

private:
    std::vector<std::unique_ptr<Guest>> m_guests;
    QVariantList m_list;
};

} // namespace

void accounts() {
    const QTemporaryDir folder;
    platform::installTestServices().workspace->documents = folder.path();
    for (const int numbers : {1, 100, 5000})
        compareAccounts(numbers);
}

void snapshots() {
    platform::installTestServices();
    rt::Class *events = rt::defineClass(u"ECCalendarEvent"_s);
    rt::Class *guests = rt::defineClass(u"ECCalendarEventAttendee"_s);
    rt::addMethod(events, "attendeeList", Appointment::list, "@@:");
    rt::addMethod(guests, "name", Guest::name, "@@:");
    rt::addMethod(guests, "emailAddress", Guest::address, "@@:");
    rt::addMethod(guests, "attendeeType", Guest::type, "i@:");
    const auto snapshotOf = [](Appointment &appointment) {
        return repeating([&appointment] { keep(vlECCalendarEvent(&appointment).getVlMeetingData()); });
    };
    Appointment alone(events, guests, 0);
    double each = 0;
    for (const int count : {1, 100, 2000}) {
        Appointment appointment(events, guests, count);
        const Comparison times = sideBySide({snapshotOf(appointment), snapshotOf(alone)}, {.seconds = 1.5});
        const double now = qMax(times.seconds[0] - times.seconds[1], 0.0) / count;
        constexpr double limit = 1e-6;
        addRow(u"snapshot with %1 attendees, each of them"_s.arg(count), timeText(now),
               u"nobody: "_s + timeText(times.seconds[1]), QString(), u"under 1 us"_s, now < limit);
        if (count == 2000)
            addRow(u"the same, linear"_s, timeText(now), u"of 100: "_s + timeText(each),
                   ratioText(now / each), u"at most 1.3"_s, now <= 1.3 * each);
        each = now;
    }
}

} // namespace bench
