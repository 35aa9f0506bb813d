#pragma once

#include <System/Environment.h>
#include <Values/Color.h>

#include <string>
#include <string_view>
#include <vector>

namespace hbr {

/// A calendar or task list that the user can watch or not.
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

/// The collection with this title, "account/title" or identifier. Throws CommandFailure (nothingThere) when
/// there is none or when several share the title; `keys` ("Calendars", "TaskLists") begins the keys of its
/// texts.
const CollectionChoice& chosen(const std::vector<CollectionChoice>& choices, const std::string& wanted,
                               const platform::Environment& environment, std::string_view keys);

}  // namespace hbr
