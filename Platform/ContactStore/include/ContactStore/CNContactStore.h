#pragma once

#include <ContactStore/CNContact.h>
#include <System/Environment.h>
#include <Values/ContactPredicate.h>

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace platform {

/// An address book that can be asked. Safe from any thread.
class CNContactStoring {
  public:
    virtual ~CNContactStoring() = default;

    virtual CNAuthorizationStatus authorizationStatus() const = 0;
    using AccessCompletion = std::function<void(bool granted, std::exception_ptr error)>;
    virtual void requestAccess(const AccessCompletion& completion) = 0;
    /// Every match, best first. Throws where the query fails.
    virtual std::vector<CNContact> unifiedContacts(const ContactPredicate& predicate,
                                                   const std::vector<CNContactKey>& keysToFetch) const = 0;
};

/// A file of cards, a folder of .vcf files or a tree of such folders.
struct ContactSource {
    std::string name;
    std::filesystem::path location;

    friend bool operator==(const ContactSource&, const ContactSource&) = default;
};

/// Gives the user's sources with each call; `definedIn` is the file whose change can change them.
struct ContactSources {
    std::function<std::vector<ContactSource>()> load;
    std::filesystem::path definedIn;
};

struct ContactSourceReport {
    ContactSource source;
    bool readable = false;
    /// Why it cannot be read; empty when it can.
    std::string problem;
    std::size_t files = 0;
    std::size_t cards = 0;
};

/// The cards (vCard 2.1, 3.0 and 4.0) of the user's sources. They are read with the first question and again
/// when access is requested or, after `startWatching`, when something changed; of the files only those that
/// did. Pictures are read when a query asks for them, never from the network. A card that cannot be read is
/// left out alone, with a diagnostic (file, line, reason) in the environment's sink.
///
/// A predicate matches the cards with its mail address, letter case ignored; where there are none, those
/// with its name (formatted, "given family", nickname, organization), letter case and white space ignored.
/// Matches are in the order of sources, files and cards.
class CNContactStore final : public CNContactStoring {
  public:
    CNContactStore(EnvironmentRef environment, ContactSources sources);
    ~CNContactStore() override;
    CNContactStore(const CNContactStore&) = delete;
    CNContactStore& operator=(const CNContactStore&) = delete;

    /// Authorized when at least one source can be read, denied when there are some and none can, not
    /// determined when there is none. Opens no file of theirs.
    CNAuthorizationStatus authorizationStatus() const override;
    /// Reads the sources again, then completes on the calling thread.
    void requestAccess(const AccessCompletion& completion) override;
    std::vector<CNContact> unifiedContacts(const ContactPredicate& predicate,
                                           const std::vector<CNContactKey>& keysToFetch) const override;

    /// For long-lived processes: the next question sees what changed.
    void startWatching();
    std::vector<ContactSourceReport> report() const;
    /// Reads every picture, so that what is wrong with one is reported.
    void examinePictures() const;

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace platform
