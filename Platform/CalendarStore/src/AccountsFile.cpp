#include <CalendarStore/Account.h>

#include <Foundation/ContentLine.h>
#include <Foundation/FileLock.h>
#include <Foundation/Files.h>
#include <Foundation/Toml.h>

#include <algorithm>
#include <iterator>

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

/// Reads one [[account]]; what is wrong with it goes to `tell(field, text)`.
template <class Tell>
std::optional<Account> accountOf(const PropertyDictionary& table, const std::filesystem::path& home,
                                 const Tell& tell) {
    Account account;
    const auto textField = [&](const char* key) -> std::optional<std::string> {
        const auto* value = table.find(key);
        if (!value) return std::nullopt;
        if (const auto* text = value->asString()) return *text;
        tell(key, "must be a text");
        return std::nullopt;
    };
    account.name = textField("name").value_or("");
    const auto location = textField("location").value_or("");
    if (account.name.empty() || location.empty()) {
        tell(account.name.empty() ? "name" : "location", "is missing; the account is left out");
        return std::nullopt;
    }
    account.location =
        location.starts_with("~/") ? home / location.substr(2) : std::filesystem::path(location);
    if (const auto* value = table.find("addresses")) {
        if (auto addresses = value->asStrings()) {
            for (auto& address : *addresses) {
                if (equalIgnoringCase(std::string_view(address).substr(0, 7), "mailto:")) address.erase(0, 7);
                account.addresses.push_back(std::move(address));
            }
        } else {
            tell("addresses", "must be a list of texts");
        }
    }
    if (const auto* value = table.find("delegate")) {
        if (const auto isDelegate = value->asBool()) {
            account.isDelegate = *isDelegate;
        } else {
            tell("delegate", "must be true or false");
        }
    }
    const auto contents = textField("contents").value_or("calendars");
    const auto kind = textField("kind").value_or("ordinary");
    if (contents == "contacts") {
        account.contents = Account::Contents::contacts;
    } else if (contents != "calendars") {
        tell("contents", "must be \"calendars\" or \"contacts\"; the account is left out");
        return std::nullopt;
    }
    if (kind == "birthdays") {
        account.kind = Account::Kind::birthdays;
    } else if (kind == "holidays") {
        account.kind = Account::Kind::holidays;
    } else if (kind != "ordinary") {
        tell("kind", "must be \"ordinary\", \"birthdays\" or \"holidays\"");
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
    /// Beside `accounts`: the tables that they were read from.
    std::vector<PropertyDictionary> tables;
    /// Entries that are no account.
    PropertyArray others;
    /// The whole file, as it was read and as it is written.
    PropertyDictionary root;
    std::string text;
    /// The file is there and no TOML, or one that has no place for accounts.
    bool broken = false;
};

/// The document with these accounts; every other entry and key of it is kept.
std::string rewritten(const LoadedAccounts& loaded, const std::vector<Account>& accounts) {
    const auto isKept = [&](const std::string& name) {
        return std::any_of(accounts.begin(), accounts.end(),
                           [&](const Account& one) { return one.name == name; });
    };
    PropertyArray tables;
    for (const auto& account : accounts) {
        const auto known =
            std::find_if(loaded.accounts.begin(), loaded.accounts.end(), [&](const Account& one) {
                return one.name == account.name || (one.location == account.location && !isKept(one.name));
            });
        if (known == loaded.accounts.end()) {
            tables.emplace_back(tableOf(account, {}));
            continue;
        }
        const auto& table = loaded.tables[static_cast<std::size_t>(known - loaded.accounts.begin())];
        tables.emplace_back(*known == account ? table : tableOf(account, table));
    }
    tables.insert(tables.end(), loaded.others.begin(), loaded.others.end());
    PropertyDictionary root = loaded.root;
    root.set("account", std::move(tables));
    return writeToml(root);
}

/// The text with the accounts that come after those it has, so that comments and layout stay; nothing where
/// something else changed.
std::optional<std::string> extended(const LoadedAccounts& loaded, const std::vector<Account>& accounts) {
    const auto known = static_cast<std::ptrdiff_t>(loaded.accounts.size());
    if (std::ssize(accounts) <= known ||
        !std::equal(loaded.accounts.begin(), loaded.accounts.end(), accounts.begin())) {
        return std::nullopt;
    }
    PropertyArray added;
    for (auto account = accounts.begin() + known; account != accounts.end(); ++account)
        added.emplace_back(tableOf(*account, {}));
    PropertyDictionary root;
    root.set("account", std::move(added));
    std::string text = loaded.text;
    if (!text.empty()) text += text.ends_with('\n') ? "\n" : "\n\n";
    text += writeToml(root);
    // An array in brackets cannot go on behind itself.
    TomlError problem;
    if (!parseToml(text, problem)) return std::nullopt;
    return text;
}

LoadedAccounts loadFrom(const std::filesystem::path& file, const Environment& environment) {
    LoadedAccounts loaded;
    std::error_code error;
    const auto text = readRegularFile(file, error);
    if (!text) {
        if (error != std::errc::no_such_file_or_directory) {
            environment.diagnostics->report({.severity = Diagnostic::Severity::error,
                                             .file = file,
                                             .text = "cannot be read: " + error.message()});
        }
        return loaded;
    }
    TomlError problem;
    loaded.text = *text;
    auto root = parseToml(*text, problem);
    if (!root) {
        loaded.broken = true;
        environment.diagnostics->report({.severity = Diagnostic::Severity::error,
                                         .file = file,
                                         .line = problem.line,
                                         .text = problem.text});
        return loaded;
    }
    loaded.root = *std::move(root);
    const auto* value = loaded.root.find("account");
    if (!value) return loaded;
    const auto* tables = value->asArray();
    int number = 0;
    const auto tell = [&](const std::string& field, std::string what) {
        environment.diagnostics->report(
            {.file = file,
             .field = "account " + std::to_string(number) + (field.empty() ? "" : ", " + field),
             .text = std::move(what)});
    };
    if (!tables) {
        loaded.broken = true;
        tell("", "must be an array of tables, [[account]]");
        return loaded;
    }
    for (const auto& entry : *tables) {
        ++number;
        const auto* table = entry.asDictionary();
        auto account = table ? accountOf(*table, environment.homeDirectory, tell) : std::nullopt;
        if (!table) tell("", "must be a table");
        if (account) {
            loaded.accounts.push_back(*std::move(account));
            loaded.tables.push_back(*table);
        } else {
            loaded.others.push_back(entry);
        }
    }
    return loaded;
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
    if (!createDirectories(environment_->configDirectory, 0700, error)) return failed();
    const FileLock lock(path().string() + ".lock", error);
    if (error) return failed();
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
    const auto text = extended(loaded, accounts);
    return writeFileAtomically(path(), text ? *text : rewritten(loaded, accounts), 0600, error) || failed();
}

}  // namespace platform
