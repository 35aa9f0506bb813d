#pragma once

#include <HbrCore/Events/Event.h>
#include <HeedbannerWidgetExtension/Views/EventPillColors.h>
#include <HeedbannerWidgetExtension/Views/EventViewSettings.h>
#include <TimeAndText/Date.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

#include <string>

namespace hbr {

/// The pill of one event: marker, title, day and time, travel time, progress, camera button.
struct EventDetailView {
    enum class CameraButtonLocation { center, inline_ };

    struct Configuration {
        /// Carried for the callers; the travel time shows whenever the event has one and the user wants it.
        bool showsTravelTime = false;
        int titleLineLimit = 1;
        CameraButtonLocation cameraButtonLocation = CameraButtonLocation::center;
        bool showsEventProgress = false;

        friend bool operator==(const Configuration&, const Configuration&) = default;
    };

    const Event& event;
    /// What the pill is drawn for; the day's name follows the clock at drawing instead.
    platform::Date now;
    Configuration configuration;
    const EventViewInputs& inputs;
    /// Of the pill's text, see Font::leading.
    double leading = 0;

    platform::View body(const platform::ViewContext& context) const;

  private:
    platform::View marker(const EventPillColors& colors) const;
    platform::View dayAndTime(const platform::ViewContext& context, const EventPillColors& colors) const;
    platform::View travelTime(const platform::ViewContext& context) const;
    platform::View progressLine(const platform::ViewContext& context, const EventPillColors& colors) const;
    platform::View cameraButton(const platform::ViewContext& context, const EventPillColors& colors) const;
    platform::View textBlock(const platform::ViewContext& context, const EventPillColors& colors) const;
    std::string dayLabel(const platform::ViewContext& context) const;
    std::string timeText() const;
};

}  // namespace hbr
