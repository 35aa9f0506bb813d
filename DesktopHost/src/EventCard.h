#pragma once

#include "CardTexts.h"

#include <Desktop/CardWindow.h>
#include <HbrCore/CoreServices.h>
#include <HbrCore/DeepLinks/DeepLinkActions.h>
#include <HbrCore/Events/Event.h>

#include <cstdint>
#include <functional>
#include <vector>

namespace hbr {

/// What the card's buttons do.
struct EventCardActions {
    std::function<void(const Event&)> join;
    std::function<void(const Event&, const VideoConferenceLink&)> joinLink;
    std::function<void(const Event&)> showInCalendar;
    std::function<void(const Event&, std::int64_t minutes)> snooze;
    std::function<void(const Event&)> snoozeUntilEvent;
    /// Asks first where that hides more than the event.
    std::function<void(const Event&)> hide;
    /// The series where that is hidden, else the one occurrence.
    std::function<void(const Event&)> showAgain;
};

/// Everything about one event. Looks the participants up in the contacts.
platform::Card eventCard(const CoreServices& core, const CardTexts& texts, const Event& event,
                         const EventCardActions& actions);
HiddenPart hiddenPart(const CoreServices& core, const Event& event);

/// Asks what of a series to hide. Without `hideOne` there is only the series.
platform::Card hidingQuestionCard(const CardTexts& texts, const Event& event, std::function<void()> hideOne,
                                  std::function<void()> hideAll, std::function<void()> cancel);
/// Says what is hidden, and takes that back.
platform::Card hiddenCard(const CoreServices& core, const CardTexts& texts, const Event& event,
                          HiddenPart part, std::function<void()> undo);
/// Says why it could not be hidden: its calendar no longer has it, or the settings cannot be written.
platform::Card notHiddenCard(const CardTexts& texts, const Event& event, bool isGone);
/// Asks which of several calls to join; offers the first twenty and says that there are more.
platform::Card callChoiceCard(const CardTexts& texts, const Event& event,
                              const std::vector<VideoConferenceLink>& links, const EventCardActions& actions);
/// Something to know, and a button that closes it.
platform::Card messageCard(const platform::Environment& environment, std::string title, std::string text);

/// The lengths that the user snoozes for, in minutes, each once.
std::vector<std::int64_t> snoozeTimes(const UserSettingsStore& settings);

}  // namespace hbr
