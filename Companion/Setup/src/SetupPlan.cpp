#include <Setup/SetupPlan.h>

#include <Setup/AccountAddition.h>
#include <Setup/PathExpansion.h>
#include <System/Files.h>
#include <TimeAndText/Text.h>
#include <Words/CompanionText.h>

#include <algorithm>
#include <map>
#include <set>

namespace hbr {

namespace {

namespace fs = std::filesystem;
using platform::Account;

bool isBelow(const fs::path& path, const fs::path& folder) {
    return path.native().starts_with(folder.native() + "/");
}

bool holdsCards(const fs::path& file) {
    std::error_code error;
    const auto content = platform::readRegularFile(file, error);
    return content && platform::lowercased(*content).find("begin:vcard") != std::string::npos;
}

/// A candidate and its contents of one kind.
struct Examined {
    const LocationCandidate* candidate = nullptr;
    std::vector<platform::FoundCollection> collections;
};

class Planner {
  public:
    Planner(CommandContext& context, const std::vector<LocationCandidate>& candidates)
        : context_(context), candidates_(candidates), existing_(context.accounts().load()) {}

    SetupPlan run() {
        std::set<const LocationCandidate*> useful;
        for (const auto contents : {Account::Contents::calendars, Account::Contents::contacts}) {
            coveredBy_.clear();
            for (std::size_t i = 0; i < existing_.size(); ++i) {
                if (existing_[i].contents != contents) continue;
                for (const auto& collection : collectionsOf(existing_[i].location, contents))
                    coveredBy_[realPath(collection.location)] = {true, i};
            }
            for (const auto& examined : examinedFor(contents)) {
                useful.insert(examined.candidate);
                add(examined, contents);
            }
        }
        for (const auto& candidate : candidates_) {
            if (!useful.contains(&candidate)) refuse(candidate);
        }
        std::ranges::stable_sort(plan_.accounts, {}, &PlannedAccount::needsConsent);
        return std::move(plan_);
    }

  private:
    /// The account that reads a folder: an existing one or a planned one, as an index into the list.
    struct Owner {
        bool isExisting = false;
        std::size_t index = 0;
    };

    static std::vector<platform::FoundCollection> collectionsOf(const fs::path& location,
                                                                Account::Contents contents) {
        const bool isContacts = contents == Account::Contents::contacts;
        std::error_code ignored;
        if (!fs::is_directory(location, ignored) && holdsCards(location) != isContacts) return {};
        platform::CollectedDiagnostics diagnostics;
        auto found = platform::discoverCollections(location, isContacts ? ".vcf" : ".ics", "", diagnostics);
        std::erase_if(found.collections, [](const auto& one) { return one.files.empty(); });
        return std::move(found.collections);
    }

    /// Parent folders first, so that folders inside them are recognised as parts of them.
    std::vector<Examined> examinedFor(Account::Contents contents) const {
        std::vector<Examined> all;
        for (const auto& candidate : candidates_) {
            if (isTooWide(*context_.environment(), candidate.location)) continue;
            auto collections = collectionsOf(candidate.location, contents);
            if (!collections.empty()) all.push_back({&candidate, std::move(collections)});
        }
        const auto order = [](const Examined& one) {
            const auto real = realPath(one.candidate->location);
            return std::pair(one.candidate->needsConsent,
                             std::pair(~one.collections.size(), std::distance(real.begin(), real.end())));
        };
        std::ranges::stable_sort(all, {}, order);
        return all;
    }

    const Owner* ownerOf(const platform::FoundCollection& collection) const {
        const fs::path real = realPath(collection.location);
        auto found = coveredBy_.find(real);
        if (found == coveredBy_.end() && !collection.isFolder) found = coveredBy_.find(real.parent_path());
        return found == coveredBy_.end() ? nullptr : &found->second;
    }

    void add(const Examined& examined, Account::Contents contents) {
        const LocationCandidate& candidate = *examined.candidate;
        std::vector<const platform::FoundCollection*> fresh;
        for (const auto& collection : examined.collections) {
            if (const Owner* owner = ownerOf(collection)) {
                note(candidate, *owner);
            } else {
                fresh.push_back(&collection);
            }
        }
        const bool isWhole = fresh.size() == examined.collections.size();
        if (isWhole && !holdsCovered(candidate.location)) {
            addPlanned(candidate, candidate.location, contents, examined.collections);
            return;
        }
        for (const auto* collection : fresh) {
            if (holdsCovered(collection->location)) {
                plan_.refusals.emplace_back(
                    ExitCode::failed, collection->location.string() + ": " +
                                          companionText(*context_.environment(), "Location.partlyThere"));
            } else {
                addPlanned(candidate, collection->location, contents, {*collection});
            }
        }
    }

    bool holdsCovered(const fs::path& folder) const {
        const fs::path real = realPath(folder);
        return std::ranges::any_of(coveredBy_, [&](const auto& one) { return isBelow(one.first, real); });
    }

    /// Adds what else is known about a location that is already read.
    void note(const LocationCandidate& candidate, const Owner& owner) {
        const auto planned = owner.isExisting ? placeOfExisting(owner.index) : owner.index;
        PlannedAccount& one = plan_.accounts[planned];
        addMissing(one.knownFrom, candidate.knownFrom);
        // The user has decided about existing accounts; configurations no longer matter.
        if (owner.isExisting && !candidate.knownFrom.empty()) return;
        if (!one.holdsContacts()) addMissing(one.account.addresses, candidate.addresses);
        if (!one.account.addresses.empty()) one.candidates.clear();
    }

    std::size_t placeOfExisting(std::size_t index) {
        const auto known = places_.find(index);
        if (known != places_.end()) return known->second;
        PlannedAccount one{.account = existing_[index], .isThere = true};
        examine(one);
        plan_.accounts.push_back(std::move(one));
        return places_[index] = plan_.accounts.size() - 1;
    }

    void examine(PlannedAccount& one) const {
        if (one.holdsContacts()) {
            one.contacts = examineContacts(*context_.environment(), one.account);
        } else {
            one.calendars = examineLocation(*context_.environment(), one.account);
        }
    }

    void addPlanned(const LocationCandidate& candidate, const fs::path& location, Account::Contents contents,
                    const std::vector<platform::FoundCollection>& collections) {
        PlannedAccount one;
        one.account = accountFor(*context_.environment(), location.string(), candidate.addresses);
        one.account.contents = contents;
        one.knownFrom = candidate.knownFrom;
        one.needsConsent = candidate.needsConsent;
        examine(one);
        const bool isRefused =
            one.holdsContacts() ? !one.contacts.refusal.empty() : !one.calendars.refusal.empty();
        if (isRefused) {
            one.holdsContacts()
                ? plan_.refusals.emplace_back(one.contacts.refusalCode, one.contacts.refusal)
                : plan_.refusals.emplace_back(one.calendars.refusalCode, one.calendars.refusal);
            return;
        }
        name(one.account);
        if (one.holdsContacts()) {
            one.account.addresses.clear();
        } else if (one.account.addresses.empty()) {
            one.candidates = addressCandidates(collections);
        }
        for (const auto& collection : collections)
            coveredBy_[realPath(collection.location)] = {false, plan_.accounts.size()};
        plan_.accounts.push_back(std::move(one));
    }

    /// Contacts whose calendars have the same name get " contacts" after it.
    void name(Account& account) {
        auto all = existing_;
        for (const auto& planned : plan_.accounts)
            all.push_back(planned.account);
        const bool isTaken = std::ranges::any_of(all, [&](const Account& one) {
            return one.name == account.name && one.contents != account.contents;
        });
        const bool isContacts = account.contents == Account::Contents::contacts;
        account.name = uniqueAccountName(account.name + (isTaken && isContacts ? " contacts" : ""), all);
    }

    void refuse(const LocationCandidate& candidate) {
        const std::string& name = candidate.location.native();
        if (isTooWide(*context_.environment(), candidate.location)) {
            plan_.refusals.emplace_back(ExitCode::failed,
                                        tooWideText(*context_.environment(), candidate.location));
            return;
        }
        const auto known = std::ranges::find_if(existing_, [&](const Account& one) {
            return isSameAccount(one, accountFor(*context_.environment(), name, {}));
        });
        if (known != existing_.end()) {
            placeOfExisting(static_cast<std::size_t>(known - existing_.begin()));
            return;
        }
        const auto examination =
            examineLocation(*context_.environment(), accountFor(*context_.environment(), name, {}));
        const std::string refusal =
            examination.refusalCode == ExitCode::nothingThere
                ? name + ": " + companionText(*context_.environment(), "Location.noCalendarsOrCards")
                : examination.refusal;
        plan_.refusals.emplace_back(examination.refusalCode, refusal);
    }

    CommandContext& context_;
    const std::vector<LocationCandidate>& candidates_;
    const std::vector<Account> existing_;
    /// For one kind of contents: the real folders and files that an account reads.
    std::map<fs::path, Owner> coveredBy_;
    /// Existing accounts that the plan names, by their index.
    std::map<std::size_t, std::size_t> places_;
    SetupPlan plan_;
};

}  // namespace

std::string PlannedAccount::counts(const platform::Environment& environment) const {
    return holdsContacts() ? companionCount(environment, "Count.contacts", contacts.report.cards)
                           : countsText(environment, calendars.report);
}

std::size_t PlannedAccount::skipped() const {
    return holdsContacts() ? contacts.skipped : calendars.skippedCount();
}

std::size_t SetupPlan::countOfNew() const {
    return static_cast<std::size_t>(
        std::ranges::count_if(accounts, [](const PlannedAccount& one) { return !one.isThere; }));
}

SetupPlan planSetup(CommandContext& context, const std::vector<LocationCandidate>& candidates) {
    return Planner(context, candidates).run();
}

}  // namespace hbr
