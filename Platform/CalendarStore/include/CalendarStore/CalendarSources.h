#pragma once

#include <CalendarStore/Account.h>
#include <System/Diagnostics.h>

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace platform {

/// A text with iCalendar items: a file of a folder, an entry of a server.
struct CalendarText {
    /// Diagnostics name it. Texts of equal names are the same text, whichever account they are in.
    std::string name = {};
    /// Equal versions of a text mean equal content; it is then not read again. Determined before the text is
    /// read. Nothing when the source does not know: the text is read at every load.
    std::optional<std::uint64_t> version = {};
};

/// A calendar, a task list, or both in one.
struct CalendarCollection {
    /// Unique in the account, "/" between names; empty for the only collection of an account. The calendar's
    /// identifier is made of it, so it must be the same in every load and every process.
    std::string path = {};
    /// Where it is, for people and reports; never opened.
    std::filesystem::path location = {};
    /// Nothing: as the first text says (X-WR-CALNAME, X-APPLE-CALENDAR-COLOR …), else the account's name and
    /// a color of the store's choice. A color is "#RRGGBB" or a CSS name; the store replaces any other.
    std::optional<std::string> title = {};
    std::optional<std::string> color = {};
    /// Sorted by name. Of two items with equal UID, SEQUENCE and date, that of the last name is used.
    std::vector<CalendarText> texts = {};
};

struct AccountContents {
    /// Why the account cannot be read; empty when it can.
    std::string problem = {};
    /// Sorted by path.
    std::vector<CalendarCollection> collections = {};
    /// What `watch` needs in order to notice every change of the account, in the source's own terms. The
    /// store only compares it and passes it back.
    std::vector<std::filesystem::path> watched = {};
};

/// Where the calendars of a store come from. A source lists accounts, says what is in them, and gives texts;
/// it keeps nothing. Scanning, caching, identifiers, occurrences, comparing with the state before and
/// announcing changes are the store's work, the same for every source.
///
/// A new kind of source (a server, another program's store) implements the five functions:
///  - Any thread may call them, several at once: the one of the store's first question, of a refresh, and the
///    store's worker. Own and delegated calendars are two stores over the same sources.
///  - They do not throw. What cannot be read is reported to the diagnostics that the source was made with,
///    naming the account or the text, and only that part is missing in the answer.
///  - Names of accounts, paths of collections and names of texts are the same in every process, unless the
///    user renames something.
class CalendarSources {
  public:
    CalendarSources() = default;
    virtual ~CalendarSources() = default;
    CalendarSources(const CalendarSources&) = delete;
    CalendarSources& operator=(const CalendarSources&) = delete;

    /// The accounts at this moment, in the user's order, with delegated ones. The store skips those of
    /// contacts.
    virtual std::vector<Account> accounts() const = 0;
    /// Access: why the account cannot be read, as in its contents; empty when it can. Cheap: a store of own
    /// accounts asks no more about the delegated ones.
    virtual std::string problem(const Account& account) const = 0;
    /// The collections of an account and which texts they have. Reads no text.
    virtual AccountContents load(const Account& account) const = 0;
    /// The bytes of a text in any encoding that iCalendar files have. Nothing when it cannot be read, which
    /// is reported to `diagnostics`.
    virtual std::optional<std::string> read(const CalendarText& text, DiagnosticsSink& diagnostics) const = 0;
    /// Calls `changed` on a thread of its own whenever an answer of the functions above may have become
    /// another one: for the list of accounts, and for the accounts whose `watched` are given together. A
    /// burst of changes is one call. Watching begins before this returns and ends when the result is
    /// released, which waits for a call under way.
    virtual std::shared_ptr<void> watch(const std::vector<std::filesystem::path>& watched,
                                        std::function<void()> changed) const = 0;
};

using CalendarSourcesRef = std::shared_ptr<const CalendarSources>;

}  // namespace platform
