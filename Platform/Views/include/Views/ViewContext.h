#pragma once

#include <TimeAndText/ClockReading.h>
#include <TimeAndText/Date.h>
#include <TimeAndText/Locale.h>
#include <Views/Palette.h>
#include <Views/PictureLibrary.h>
#include <Views/WidgetFamily.h>

#include <memory>

namespace platform {

/// What a view may know besides its own fields; one value per drawing.
struct ViewContext {
    WidgetFamily family = WidgetFamily::systemMedium;
    /// Clock at drawing. A view asks `clock()`.
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
    /// Where the views note when they would be drawn differently, of one drawing; shared by copies. May be
    /// absent.
    std::shared_ptr<ChangeMoments> changes = nullptr;

    ClockReading clock() const { return {now, changes.get()}; }
    /// Of a view that is drawn as of `moment`: when that is not the clock at drawing, it does not change.
    ClockReading clockAt(Date moment) const { return moment == now ? clock() : ClockReading(moment); }
    const Palette& palette() const { return Palette::of(appearance, contrast); }
};

}  // namespace platform
