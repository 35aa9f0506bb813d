#pragma once

#include <HbrCore/Events/Event.h>
#include <System/Environment.h>
#include <TimeAndText/Date.h>
#include <Views/View.h>
#include <Views/ViewContext.h>

namespace hbr {

/// Joins the event's call while it is pending or under way; drawn faintly otherwise, absent without a link.
struct CameraButton {
    const Event& event;
    platform::Date now;
    bool isPending = false;
    /// Of the texts.
    const platform::Environment& environment;

    bool isActive() const;
    /// `ground`: what is behind the button, opaque.
    platform::View body(const platform::ViewContext& context, platform::Color ground) const;
};

}  // namespace hbr
