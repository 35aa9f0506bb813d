#pragma once

#include <Foundation/Date.h>
#include <Foundation/Locale.h>
#include <Views/Palette.h>
#include <Views/PictureLibrary.h>
#include <Views/WidgetFamily.h>

#include <memory>

namespace platform {

/// What a view may know besides its own fields; one value per drawing.
struct ViewContext {
    WidgetFamily family = WidgetFamily::systemMedium;
    /// Clock at drawing.
    Date now;
    Locale locale;
    /// Of the language of the texts.
    bool isRightToLeft = false;
    Appearance appearance = Appearance::light;
    Contrast contrast = Contrast::normal;
    /// Device pixels per point.
    double scale = 1;
    /// May be absent: symbols are then laid out square and not drawn.
    std::shared_ptr<const PictureLibrary> pictures;

    const Palette& palette() const { return Palette::of(appearance, contrast); }
};

}  // namespace platform
