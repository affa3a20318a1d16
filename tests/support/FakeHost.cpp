#include "tests/support/FakeHost.h"

#include "platform/toolkit/Windows.h"

#include <QCoreApplication>
#include <QLineEdit>

namespace {

// "setLocation:" sets "location".
QString memberOfSetter(const QString &setter) {
    return setter.at(3).toLower() + setter.mid(4).chopped(1);
}

void runDuring() {
    if (const auto work = fakehost::during())
        work();
}

rt::Value answer(rt::Object *self, rt::Selector command, rt::Args) {
    const rt::Value value = static_cast<FakeObject *>(self)->values.value(command.name());
    runDuring(); // it may delete the object
    return value;
}

rt::Value set(rt::Object *self, rt::Selector command, rt::Args arguments) {
    static_cast<FakeObject *>(self)->values.insert(memberOfSetter(command.name()), arguments[0]);
    return {};
}

rt::Value note(rt::Object *self, rt::Selector command, rt::Args arguments) {
    auto *object = static_cast<FakeObject *>(self);
    object->called.append(command.name());
    object->arguments.clear();
    for (int i = 0; i < arguments.count(); ++i)
        object->arguments.append(arguments[i]);
    return answer(self, command, arguments);
}

rt::Value showBody(rt::Object *self, rt::Selector command, rt::Args arguments) {
    note(self, command, arguments);
    rt::Object *content = rt::objectValue(static_cast<FakeObject *>(self)->values.value("editorContent"));
    if (content)
        static_cast<FakeObject *>(content)->values.insert("bodyContent", arguments[0]);
    return {};
}

rt::Value dateUTC(rt::Object *self, rt::Selector, rt::Args) {
    return static_cast<FakeDate *>(self)->instant;
}

rt::Value secondsSince(rt::Object *self, rt::Selector, rt::Args arguments) {
    const auto *other = static_cast<FakeDate *>(rt::objectValue(arguments[0]));
    return double(other->instant.msecsTo(static_cast<FakeDate *>(self)->instant)) / 1000.0;
}

rt::Value later(rt::Object *self, rt::Selector, rt::Args arguments) {
    const auto *date = static_cast<FakeDate *>(self);
    const double milliseconds = qBound(-1e15, rt::doubleValue(arguments[0]) * 1000, 1e15);
    return rt::fromObject(
        rt::temporary(std::make_unique<FakeDate>(date->instant.addMSecs(qint64(milliseconds)))));
}

rt::Class *define(const char *name, std::initializer_list<const char *> members,
                  std::initializer_list<const char *> operations = {}, rt::Class *superclass = nullptr) {
    rt::Class *cls = rt::defineClass(QString::fromLatin1(name), superclass);
    for (const char *member : members)
        rt::addMethod(cls, member, QByteArrayView(member).startsWith("set") ? &set : &answer, "");
    for (const char *operation : operations)
        rt::addMethod(cls, operation, &note, "");
    return cls;
}

void defineDates() {
    rt::Class *cls = define("OLCalendarDate", {});
    rt::addMethod(cls, "dateUTC", &dateUTC, "");
    rt::addMethod(cls, "timeIntervalSinceDate:", &secondsSince, "");
    rt::addMethod(cls, "dateByAddingTimeInterval:", &later, "");
}

void defineEditor(bool withReplacedMethods) {
    rt::Class *editor =
        define("ERCalendarEventEditorViewController",
               {"content", "uncommittedChanges", "isDelegating", "isCancelMode", "isOccurrenceOrException",
                "isDirty", "setIsDirty:", "olmUCCapabilities", "setOlmUCCapabilities:", "locationTextField",
                "view", "attendeeList", "currentEmailAccount"});
    if (withReplacedMethods)
        for (const char *operation :
             {"save", "saveArg:", "saveAndCloseWindow:", "saveAndCloseWindowAndReturnError:andReturnError:",
              "sendMeetingPostValidate"})
            rt::addMethod(editor, rt::Selector(u"vl_ERCalendarEventEditorViewController_"_s + operation),
                          &note, "");
    define("ERCalendarEventEditorWindowController", {"editorViewController", "window"}, {"close"});
}

// Each newer generation of the host shows a body through a method with one more argument.
void defineBodyEditors() {
    define("OLWordMailEditorContent", {"bodyContent"});
    rt::Class *cls = nullptr;
    for (const auto &[name, method] :
         {std::pair{"OLWordMailEditor", "displayHTMLContent:readOnly:"},
          {"SigningWordEditor", "displayHTMLContent:readOnly:signatureEditor:"},
          {"ActivatingWordEditor", "displayHTMLContent:readOnly:signatureEditor:activateEditor:"}}) {
        cls = define(name, {"editorContent"}, {}, cls);
        rt::addMethod(cls, method, &showBody, "");
    }
}

} // namespace

void fakehost::define(bool withReplacedMethods) {
    static bool defined = false;
    if (std::exchange(defined, true))
        return;
    ::define("ECCalendarEvent", {"summary", "setSummary:", "location", "setLocation:", "startTime", "endTime",
                                 "recurrence", "body", "attendeeList", "isOccurrence", "isModifiedException",
                                 "isOwner", "account", "olmUCCapabilities", "setOlmUCCapabilities:"});
    rt::Class *record =
        ::define("ECMutableCalendarEvent", {"summary", "setSummary:", "location", "setLocation:", "body",
                                            "setBody:", "olmUCCapabilities"});
    if (withReplacedMethods)
        rt::addMethod(record, "setOlmUCCapabilities:", &set, "");
    ::define("ECCalendarEventAttendee", {"name", "emailAddress", "attendeeType"});
    ::define("ECEmailAccount", {"emailAddress"});
    ::define("CCGridViewController", {"view", "selectedEvent"});
    ::define("OLCalendarGridViewWrapper", {"gridViewController", "gridViewControllers"});
    ::define("ERageMainWindowController", {});
    ::define("ErageAppDelegate", {}, {"newCalendarMeeting:"});
    defineDates();
    defineEditor(withReplacedMethods);
    defineBodyEditors();
}

std::function<void()> &fakehost::during() {
    static std::function<void()> work;
    return work;
}

FakeObject::FakeObject(const QString &className, const QVariantMap &values)
    : rt::Object((fakehost::define(), rt::classNamed(className)))
    , values(values) {}

FakeDate::FakeDate(const QDateTime &instant)
    : FakeObject("OLCalendarDate")
    , instant(instant) {}

FakeAppointment::FakeAppointment()
    : FakeObject("ECCalendarEvent", {{"summary", "Review"}, {"isOwner", true}}) {
    values.insert("startTime", rt::fromObject(&m_start));
    values.insert("endTime", rt::fromObject(&m_end));
}

void FakeAppointment::carriesTheMeeting(const QString &key, const QString &joinUrl) {
    values.insert("olmUCCapabilities", u"{\"meetingKey\":\"%1\",\"joinUrl\":\"%2\"}"_s.arg(key, joinUrl));
}

FakeEditor::FakeEditor(FakeAppointment &appointment)
    : FakeObject("ERCalendarEventEditorViewController")
    , m_view(new QWidget(m_window))
    , m_locationField(new QLineEdit(m_view))
    , m_windowController("ERCalendarEventEditorWindowController")
    , m_bodyContent("OLWordMailEditorContent", {{"bodyContent", "<html><body>Agenda</body></html>"}})
    , m_bodyEditor("OLWordMailEditor", {{"editorContent", rt::fromObject(&m_bodyContent)}}) {
    m_locationField->setText(appointment.location());
    values = {{"content", rt::fromObject(&appointment)},
              {"locationTextField", rt::fromWidget(m_locationField)},
              {"view", rt::fromWidget(m_view)}};
    m_windowController.values = {{"editorViewController", rt::fromObject(this)},
                                 {"window", rt::fromWidget(m_window)}};
    platform::registerWindow(m_window, &m_windowController);
}

FakeEditor::~FakeEditor() {
    if (m_window)
        platform::unregisterWindow(m_window);
    delete m_window;
}

void FakeEditor::close() {
    platform::windowWillClose(m_window);
    delete m_window;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

void FakeEditor::pends(const QString &member, const QVariant &value) {
    QVariantMap changes = values.value("uncommittedChanges").toMap();
    changes.insert("content." + member, value);
    values.insert("uncommittedChanges", changes);
}
