#pragma once

#include <System/Environment.h>
#include <Values/Color.h>

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// A calendar or a task list among which the user chooses.
struct CollectionChoice {
    std::string identifier;
    std::string name;
    std::string accountName;
    platform::Color color;
    bool active = false;
    bool isDelegate = false;
    /// Not watched, and the user has not decided about it yet.
    bool isNew = false;

    std::string qualifiedName() const { return accountName + "/" + name; }
};

/// The one meant by a title, by "account/title" or by an identifier; `keys`
/// ("Calendars", "TaskLists") are those of the texts of the CommandFailure (nothing there to act on) when
/// there is none or when several share the title.
const CollectionChoice& chosen(const std::vector<CollectionChoice>& choices, const std::string& wanted,
                               const platform::Environment& environment, std::string_view keys);

}  // namespace hbr
