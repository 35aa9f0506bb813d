#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>

namespace hbr {

/// The call of the event to join: its only one, the one stored as the user's choice, else the one chosen now
/// on the terminal. Throws CommandFailure (nothingThere) when it has no call, or when it has several and
/// nobody can be asked; the message then lists them.
VideoConferenceLink chosenCall(CommandContext& context, const Event& event);

/// Opens the call and reports it. Throws when no program can open it.
void joinCall(CommandContext& context, const Event& event);

}  // namespace hbr
