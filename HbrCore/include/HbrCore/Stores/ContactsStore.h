#pragma once

#include <ContactStore/CNContactStore.h>
#include <HbrCore/Events/Event.h>
#include <HbrCore/Events/Participant.h>
#include <System/Environment.h>

#include <atomic>
#include <exception>
#include <functional>
#include <memory>
#include <stdexcept>
#include <vector>

namespace hbr {

/// Why access to the contacts could not be had.
class ContactsError : public std::runtime_error {
  public:
    enum class Code { accessNotGranted };
    explicit ContactsError(Code code);
    Code code() const { return code_; }

  private:
    Code code_;
};

/// Turns the participants of an event into those that are shown, with names and pictures from the user's
/// contacts. Safe from any thread.
class ContactsStore {
  public:
    /// The environment gives the words for those without a name.
    explicit ContactsStore(std::shared_ptr<platform::CNContactStoring> contactsStore,
                           platform::EnvironmentRef environment = platform::Environment::current());
    /// Of CoreServices::shared().
    static ContactsStore& shared();

    /// As it was when the store was made, or when access was last asked for.
    bool hasContactsAccess() const { return hasContactsAccess_; }
    using AccessCompletion = std::function<void(std::exception_ptr error)>;
    /// Completes with ContactsError without access, or with what went wrong while asking.
    void requestAccess(const AccessCompletion& completion);
    /// In the event's order; those that agree in every field are listed once. Asks the contacts for each one,
    /// on the calling thread; whom they do not know gets a new id with every call.
    std::vector<Participant> participants(const Event& event) const;

  private:
    std::shared_ptr<platform::CNContactStoring> contactsStore_;
    platform::EnvironmentRef environment_;
    std::atomic<bool> hasContactsAccess_;
};

}  // namespace hbr
