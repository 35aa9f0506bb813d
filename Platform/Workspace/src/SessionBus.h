#pragma once

#include "GObjectRef.h"

#include <string>

namespace platform {

/// The session bus of the user, or nothing where there is none. Never starts one: a bus that only this
/// process knows would be of no use to anybody.
GObjectRef<GDBusConnection> sessionBus();

/// The object path that belongs to a bus name: "com.example.App" → "/com/example/App".
std::string objectPathOf(const std::string& busName);

/// What went wrong, without the prefix that names the remote error.
std::string messageOf(const GError* error);

}  // namespace platform
