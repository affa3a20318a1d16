// Property lists: bundles, defaults, one-string files.
#include "platform/services/propertylist/PropertyList.h"
#include "tests/fuzz/FuzzTarget.h"

using namespace fuzz;

namespace {

void open(const QByteArray &bytes) {
    const rt::Value value = platform::PropertyList::parse(bytes);
    const QByteArray xml = platform::PropertyList::toXml(value);
    claim(rt::isPresent(value) || xml.isEmpty(), "no value is no property list");
    if (xml.isEmpty())
        return;
    claimSame(platform::PropertyList::toXml(platform::PropertyList::parse(xml)), xml,
              "a value that was read again is written as before");
}

const AddFuzzTarget target("propertylist", open);

} // namespace
