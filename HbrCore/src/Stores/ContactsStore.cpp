#include <HbrCore/Stores/ContactsStore.h>

#include <HbrLocalization/L10n.h>
#include <MxLogger/MxLogger.h>
#include <TimeAndText/Text.h>
#include <Values/Uuid.h>

#include <algorithm>
#include <unordered_map>
#include <utility>

namespace hbr {

namespace {

std::optional<platform::CNContact> firstContact(const platform::CNContactStoring& store,
                                                const platform::ContactPredicate& predicate) {
    static const std::vector<platform::CNContactKey> keysToFetch = {platform::CNContactGivenNameKey,
                                                                    platform::CNContactFamilyNameKey,
                                                                    platform::CNContactThumbnailImageDataKey};
    try {
        auto contacts = store.unifiedContacts(predicate, keysToFetch);
        if (!contacts.empty()) return std::move(contacts.front());
    } catch (const std::exception&) {
        // As without a match: the others are still to be shown.
    }
    return std::nullopt;
}

std::string fallbackName(const Event::ParticipantData& data, const platform::Environment& environment) {
    return platform::trimmed(data.name    ? *data.name
                             : data.email ? *data.email
                                          : L10n::General::unknown(environment));
}

Participant participant(const Event::ParticipantData& data, const platform::CNContactStoring& store,
                        const platform::Environment& environment) {
    Participant result{.id = {},
                       .givenName = std::nullopt,
                       .familyName = std::nullopt,
                       .email = data.email,
                       .fallbackName = fallbackName(data, environment),
                       .image = std::nullopt,
                       .isOrganizer = data.isOrganizer,
                       .status = data.status};
    if (auto contact = firstContact(store, data.contactPredicate)) {
        result.id = std::move(contact->identifier);
        result.givenName = std::move(contact->givenName);
        result.familyName = std::move(contact->familyName);
        result.image = std::move(contact->thumbnailImageData);
    } else {
        result.id = platform::Uuid::random().uuidString();
    }
    return result;
}

}  // namespace

ContactsError::ContactsError(Code code)
    : std::runtime_error("access to the contacts is not granted"), code_(code) {}

ContactsStore::ContactsStore(std::shared_ptr<platform::CNContactStoring> contactsStore,
                             platform::EnvironmentRef environment)
    : contactsStore_(std::move(contactsStore)),
      environment_(std::move(environment)),
      hasContactsAccess_(contactsStore_->authorizationStatus() ==
                         platform::CNAuthorizationStatus::authorized) {}

void ContactsStore::requestAccess(const AccessCompletion& completion) {
    MxLogger::info(LogCategory::contacts, "Requesting Contacts access");
    contactsStore_->requestAccess([this, completion](bool granted, std::exception_ptr error) {
        if (error) return completion(error);
        hasContactsAccess_ = granted;
        if (!granted) {
            return completion(std::make_exception_ptr(ContactsError(ContactsError::Code::accessNotGranted)));
        }
        MxLogger::info(LogCategory::contacts, "Contacts access granted");
        completion(nullptr);
    });
}

std::vector<Participant> ContactsStore::participants(const Event& event) const {
    std::vector<Participant> result;
    result.reserve(event.participantsData.size());
    // Equality alone would drop people who share a mailbox; equality and hash together drop repeats only.
    std::unordered_multimap<std::size_t, std::size_t> seen;
    for (const auto& data : event.participantsData) {
        Participant next = participant(data, *contactsStore_, *environment_);
        const auto hash = std::hash<Participant>{}(next);
        const auto [begin, end] = seen.equal_range(hash);
        const bool isRepeated =
            std::any_of(begin, end, [&](const auto& known) { return result[known.second] == next; });
        if (isRepeated) continue;
        seen.emplace(hash, result.size());
        result.push_back(std::move(next));
    }
    return result;
}

}  // namespace hbr
