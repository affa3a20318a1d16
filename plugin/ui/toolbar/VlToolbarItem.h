// An item of the plug-in in the main window's tool-bar.
#pragma once

#include "platform/toolkit/ToolbarItem.h"
#include "plugin/ui/controls/bundleImage.h"

// Enabled only if the host's version is supported.
class VlToolbarItem : public platform::ToolbarItem {
    Q_OBJECT
public:
    explicit VlToolbarItem(const QString &identifier);

    // Sets an image of the plug-in's resources. It is also kept for the views, which draw it sharp on every
    // display.
    void setBundleImage(const BundleImage &image, const QIcon &icon);
    [[nodiscard]] const BundleImage &bundleImage() const { return m_bundleImage; }

    void validate() override;

private:
    BundleImage m_bundleImage;
};
