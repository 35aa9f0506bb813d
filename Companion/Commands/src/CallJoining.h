#pragma once

#include <Session/CommandContext.h>

#include <HbrCore/Events/Event.h>

namespace hbr {

/// The call of the event that is meant: its only one, the one that the user chose for it, else the one chosen
/// now on the terminal. Throws (nothing there to act on) when it has none, or several and nobody can be
/// asked; the message then lists them.
VideoConferenceLink chosenCall(CommandContext& context, const Event& event);

/// Opens the call and says so. Throws when nothing can open it.
void joinCall(CommandContext& context, const Event& event);

}  // namespace hbr
