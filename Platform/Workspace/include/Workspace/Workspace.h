#pragma once

#include <TimeAndText/Url.h>

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The desktop that the user works on, as far as programs ask it for something. Any thread.
class Workspace {
  public:
    virtual ~Workspace() = default;

    /// Hands the URL to the program that the user chose for its scheme and brings that program to the
    /// front. Nothing when that was started, else why not, as one line for the user.
    virtual std::optional<std::string> open(const Url& url) = 0;
    /// Name of the program that opens URLs of a scheme, as users know it; nothing when there is none.
    virtual std::optional<std::string> programForScheme(std::string_view scheme) const = 0;
    /// The same for a kind of file, by its MIME type ("text/calendar").
    virtual std::optional<std::string> programForContentType(std::string_view contentType) const = 0;
    /// Starts that program, or brings it to the front, without a file. Nothing when it was started, else why
    /// not, as one line for the user.
    virtual std::optional<std::string> startProgramForContentType(std::string_view contentType) = 0;
    /// Lets the next program that is started come to the front: what the desktop gave with the user's click.
    virtual void useActivationToken(const std::string&) {}

    /// The process's workspace: the desktop's, unless another one was set (a test, a dry run).
    static std::shared_ptr<Workspace> shared();
    /// Null gives the desktop's back.
    static void setShared(std::shared_ptr<Workspace> workspace);
};

}  // namespace platform
