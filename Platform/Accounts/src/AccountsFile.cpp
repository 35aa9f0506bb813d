#include <Accounts/AccountsFile.h>

#include <CalendarFiles/ContentLine.h>
#include <System/FileLock.h>
#include <System/Files.h>
#include <Values/Toml.h>
#include <Values/TomlEdit.h>

#include <algorithm>

namespace platform {
namespace {

const char* textOf(Account::Contents contents) {
    return contents == Account::Contents::contacts ? "contacts" : "calendars";
}

const char* textOf(Account::Kind kind) {
    switch (kind) {
        case Account::Kind::birthdays:
            return "birthdays";
        case Account::Kind::holidays:
            return "holidays";
        default:
            return "ordinary";
    }
}

std::filesystem::path withHome(const std::string& location, const std::filesystem::path& home) {
    return location.starts_with("~/") ? home / location.substr(2) : std::filesystem::path(location);
}

/// Reads one [[account]]; reports what is wrong with it: `report(field, text)`.
template <class Report>
std::optional<Account> accountOf(const PropertyDictionary& table, const std::filesystem::path& home,
                                 const Report& report) {
    Account account;
    const auto textField = [&](const char* key) -> std::optional<std::string> {
        const auto* value = table.find(key);
        if (!value) return std::nullopt;
        if (const auto* text = value->asString()) return *text;
        report(key, "must be a text");
        return std::nullopt;
    };
    account.name = textField("name").value_or("");
    const auto location = textField("location").value_or("");
    if (account.name.empty() || location.empty()) {
        report(account.name.empty() ? "name" : "location", "is missing; the account is left out");
        return std::nullopt;
    }
    account.location = withHome(location, home);
    if (const auto* value = table.find("addresses")) {
        if (auto addresses = value->asStrings()) {
            for (auto& address : *addresses) {
                if (equalIgnoringCase(std::string_view(address).substr(0, 7), "mailto:")) address.erase(0, 7);
                account.addresses.push_back(std::move(address));
            }
        } else {
            report("addresses", "must be a list of texts");
        }
    }
    if (const auto* value = table.find("delegate")) {
        if (const auto isDelegate = value->asBool()) {
            account.isDelegate = *isDelegate;
        } else {
            report("delegate", "must be true or false");
        }
    }
    const auto contents = textField("contents").value_or("calendars");
    const auto kind = textField("kind").value_or("ordinary");
    if (contents == "contacts") {
        account.contents = Account::Contents::contacts;
    } else if (contents != "calendars") {
        report("contents", "must be \"calendars\" or \"contacts\"; the account is left out");
        return std::nullopt;
    }
    if (kind == "birthdays") {
        account.kind = Account::Kind::birthdays;
    } else if (kind == "holidays") {
        account.kind = Account::Kind::holidays;
    } else if (kind != "ordinary") {
        report("kind", "must be \"ordinary\", \"birthdays\" or \"holidays\"");
    }
    return account;
}

/// What the table holds beside the account's own fields stays.
PropertyDictionary tableOf(const Account& account, PropertyDictionary table) {
    for (const char* field : {"addresses", "delegate", "contents", "kind"})
        table.remove(field);
    table.set("name", account.name);
    table.set("location", account.location.string());
    PropertyArray addresses;
    for (const auto& address : account.addresses)
        addresses.emplace_back(address);
    if (!addresses.empty()) table.set("addresses", std::move(addresses));
    if (account.isDelegate) table.set("delegate", true);
    if (account.contents != Account::Contents::calendars) table.set("contents", textOf(account.contents));
    if (account.kind != Account::Kind::ordinary) table.set("kind", textOf(account.kind));
    return table;
}

struct LoadedAccounts {
    std::vector<Account> accounts;
    /// Beside `accounts`: the tables that they were read from, and their places in the file's array.
    std::vector<PropertyDictionary> tables;
    std::vector<std::size_t> places;
    /// Entries that are not accounts.
    PropertyArray others;
    /// The whole file, as it was read and as it is written.
    PropertyDictionary root;
    std::string text;
    /// The file is there and no TOML, or one that has no place for accounts.
    bool broken = false;
};

/// The account that `wanted` was before: of the same name, else of the same location where that one's name
/// is gone. Nothing for a new one.
std::optional<std::size_t> formerPlace(const LoadedAccounts& loaded, const std::vector<Account>& accounts,
                                       const Account& wanted) {
    const auto isKept = [&](const std::string& name) {
        return std::any_of(accounts.begin(), accounts.end(),
                           [&](const Account& one) { return one.name == name; });
    };
    const auto former = std::find_if(loaded.accounts.begin(), loaded.accounts.end(), [&](const Account& one) {
        return one.name == wanted.name || (one.location == wanted.location && !isKept(one.name));
    });
    if (former == loaded.accounts.end()) return std::nullopt;
    return static_cast<std::size_t>(former - loaded.accounts.begin());
}

/// The document with these accounts; every other entry and key of it is kept.
std::string rewritten(const LoadedAccounts& loaded, const std::vector<Account>& accounts) {
    PropertyArray tables;
    for (const auto& account : accounts) {
        const auto former = formerPlace(loaded, accounts, account);
        if (!former) {
            tables.emplace_back(tableOf(account, {}));
            continue;
        }
        const auto& table = loaded.tables[*former];
        tables.emplace_back(loaded.accounts[*former] == account ? table : tableOf(account, table));
    }
    tables.insert(tables.end(), loaded.others.begin(), loaded.others.end());
    PropertyDictionary root = loaded.root;
    root.set("account", std::move(tables));
    return writeToml(root);
}

/// The text with what is different between the two; nothing where that cannot be done in place.
std::optional<std::string> withChanges(const std::string& text, std::size_t place, const Account& before,
                                       const Account& after) {
    const PropertyDictionary old = tableOf(before, {});
    const PropertyDictionary now = tableOf(after, {});
    std::optional<std::string> changed = text;
    for (const char* field : {"name", "location", "addresses", "delegate", "contents", "kind"}) {
        const auto* oldValue = old.find(field);
        const auto* value = now.find(field);
        const bool isSame = oldValue && value ? *oldValue == *value : oldValue == value;
        if (changed && !isSame) changed = withTomlValue(*changed, "account", place, field, value);
    }
    return changed;
}

LoadedAccounts read(std::string text, const std::filesystem::path& file, const Environment& environment,
                    DiagnosticsSink& diagnostics);

/// The text with these accounts, comments and layout kept; nothing where the order changed or the text is
/// written in a way that cannot be edited.
std::optional<std::string> edited(const LoadedAccounts& loaded, const std::vector<Account>& accounts,
                                  const std::filesystem::path& file, const Environment& environment) {
    std::optional<std::string> text = loaded.text;
    std::vector<bool> isKept(loaded.accounts.size());
    std::vector<const Account*> added;
    for (const auto& account : accounts) {
        const auto former = formerPlace(loaded, accounts, account);
        if (!former) {
            added.push_back(&account);
            continue;
        }
        isKept[*former] = true;
        text = withChanges(*text, loaded.places[*former], loaded.accounts[*former], account);
        if (!text) return std::nullopt;
    }
    for (std::size_t i = isKept.size(); text && i-- > 0;) {
        if (!isKept[i]) text = withoutTomlTable(*text, "account", loaded.places[i]);
    }
    for (const Account* account : added) {
        if (text) text = withMoreToml(*text, "account", tableOf(*account, {}));
    }
    std::vector<Account> expected = accounts;
    for (auto& account : expected)
        account.location = withHome(account.location.string(), environment.homeDirectory);
    CollectedDiagnostics ignored;
    if (!text || read(*text, file, environment, ignored).accounts != expected) return std::nullopt;
    return text;
}

LoadedAccounts read(std::string text, const std::filesystem::path& file, const Environment& environment,
                    DiagnosticsSink& diagnostics) {
    LoadedAccounts loaded;
    TomlError problem;
    auto root = parseToml(text, problem);
    loaded.text = std::move(text);
    if (!root) {
        loaded.broken = true;
        diagnostics.report({.severity = Diagnostic::Severity::error,
                            .file = file,
                            .line = problem.line,
                            .text = problem.text});
        return loaded;
    }
    loaded.root = *std::move(root);
    const auto* value = loaded.root.find("account");
    if (!value) return loaded;
    const auto* tables = value->asArray();
    std::size_t number = 0;
    const auto report = [&](const std::string& field, std::string what) {
        diagnostics.report(
            {.file = file,
             .field = "account " + std::to_string(number) + (field.empty() ? "" : ", " + field),
             .text = std::move(what)});
    };
    if (!tables) {
        loaded.broken = true;
        report("", "must be an array of tables, [[account]]");
        return loaded;
    }
    for (const auto& entry : *tables) {
        ++number;
        const auto* table = entry.asDictionary();
        auto account = table ? accountOf(*table, environment.homeDirectory, report) : std::nullopt;
        if (!table) report("", "must be a table");
        if (account) {
            loaded.accounts.push_back(*std::move(account));
            loaded.tables.push_back(*table);
            loaded.places.push_back(number - 1);
        } else {
            loaded.others.push_back(entry);
        }
    }
    return loaded;
}

LoadedAccounts loadFrom(const std::filesystem::path& file, const Environment& environment) {
    std::error_code error;
    auto text = readRegularFile(file, error);
    if (text) return read(*std::move(text), file, environment, *environment.diagnostics);
    if (error != std::errc::no_such_file_or_directory) {
        environment.diagnostics->report({.severity = Diagnostic::Severity::error,
                                         .file = file,
                                         .text = "cannot be read: " + error.message()});
    }
    return {};
}

}  // namespace

AccountsFile::AccountsFile(EnvironmentRef environment) : environment_(std::move(environment)) {}

std::filesystem::path AccountsFile::path() const {
    return environment_->configDirectory / "accounts.toml";
}

std::vector<Account> AccountsFile::load() const {
    return loadFrom(path(), *environment_).accounts;
}

bool AccountsFile::update(const std::function<void(std::vector<Account>&)>& change) {
    std::error_code error;
    const auto failed = [&] {
        environment_->diagnostics->report({.severity = Diagnostic::Severity::error,
                                           .file = path(),
                                           .text = "cannot be written: " + error.message()});
        return false;
    };
    const auto lock = FileLock::of(path(), error);
    if (!lock) return failed();
    auto loaded = loadFrom(path(), *environment_);
    if (loaded.broken) {
        const auto moved = setAside(path(), error);
        if (!moved) return failed();
        environment_->diagnostics->report({.file = path(), .text = "set aside as " + moved->string()});
        loaded.root = {};
        loaded.text.clear();
    }
    auto accounts = loaded.accounts;
    change(accounts);
    if (accounts == loaded.accounts && !loaded.broken) return true;
    const auto text = edited(loaded, accounts, path(), *environment_);
    const std::string content = text ? *text : rewritten(loaded, accounts);
    if (trimmedAscii(content).empty()) {
        // As before the first account came.
        std::filesystem::remove(path(), error);
        return !error || failed();
    }
    return writeFileAtomically(path(), content, 0600, error) || failed();
}

}  // namespace platform
