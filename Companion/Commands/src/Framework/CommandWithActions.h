#pragma once

#include "Framework/Command.h"

#include <CLI/App.hpp>

#include <string>

namespace hbr {

/// A command with actions ("rules add"); each action is a member function of `Derived`.
template <class Derived>
class CommandWithActions : public Command {
  public:
    ExitCode run(CommandContext& context) override {
        return (static_cast<Derived&>(*this).*action_)(context);
    }

  protected:
    using Action = ExitCode (Derived::*)(CommandContext&);

    /// `otherwise`: what the command does without an action; null if an action is required.
    explicit CommandWithActions(Action otherwise) : action_(otherwise) {}

    CLI::App* add(CLI::App& app, const std::string& word, const std::string& summary, Action action) {
        auto* below = app.add_subcommand(word, summary);
        below->parse_complete_callback([this, action] { action_ = action; });
        return below;
    }
    bool does(Action action) const { return action_ == action; }

  private:
    Action action_;
};

}  // namespace hbr
