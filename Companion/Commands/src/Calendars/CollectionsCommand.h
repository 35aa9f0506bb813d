#pragma once

#include "Framework/Command.h"

#include <CalendarStore/EKEnums.h>
#include <HbrLocalization/FormatArgument.h>
#include <Setup/CollectionChoice.h>

#include <initializer_list>
#include <string>
#include <vector>

namespace hbr {

/// `calendars` and `reminder-lists`: list them and choose which are watched.
class CollectionsCommand final : public Command {
  public:
    explicit CollectionsCommand(platform::EKEntityType type) : type_(type) {}

    std::string_view name() const override;
    std::string_view group() const override { return commandGroup::calendars; }
    std::string_view summary() const override;
    std::string_view examples() const override;
    void declare(CLI::App& app) override;
    ExitCode run(CommandContext& context) override;

  private:
    enum class Action { list, activate, deactivate };

    bool isCalendars() const { return type_ == platform::EKEntityType::event; }
    /// A text about calendars or task lists.
    std::string text(const CommandContext& context, const std::string& key,
                     std::initializer_list<L10n::FormatArgument> arguments = {}) const;
    /// The beginning of the keys of such texts.
    std::string keys() const { return isCalendars() ? "Calendars" : "TaskLists"; }
    ExitCode list(CommandContext& context, const std::vector<CollectionChoice>& choices) const;
    ExitCode change(CommandContext& context, const std::vector<CollectionChoice>& choices) const;

    platform::EKEntityType type_;
    Action action_ = Action::list;
    std::vector<std::string> names_;
    bool all_ = false;
    bool json_ = false;
};

}  // namespace hbr
