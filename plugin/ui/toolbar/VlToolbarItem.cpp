#include "plugin/ui/toolbar/VlToolbarItem.h"

#include "platform/runtime/Runtime.h"
#include "plugin/link/discovery/vlAppHelper.h"

namespace {

rt::Class *itemClass() {
    static rt::Class *cls = rt::defineClass(u"VlToolbarItem"_s, rt::defineClass(u"ToolbarItem"_s));
    return cls;
}

} // namespace

VlToolbarItem::VlToolbarItem(const QString &identifier)
    : platform::ToolbarItem(identifier, itemClass()) {}

void VlToolbarItem::setBundleImage(const BundleImage &image, const QIcon &icon) {
    m_bundleImage = image;
    setImage(icon);
}

void VlToolbarItem::validate() {
    setEnabled(vlAppHelper::sharedInstance().isSupportedOutlookVersion());
}
