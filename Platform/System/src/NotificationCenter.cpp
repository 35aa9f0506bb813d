#include <System/NotificationCenter.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <utility>
#include <vector>

namespace platform {

struct NotificationCenter::Observation::Registration {
    std::string name;
    std::function<void()> observer;
    std::weak_ptr<State> centre;

    std::mutex mutex;
    std::condition_variable delivered;
    bool isCancelled = false;
    /// Threads that are inside `observer`, one entry for each call.
    std::vector<std::thread::id> deliveries;

    void deliver() {
        {
            std::lock_guard lock(mutex);
            if (isCancelled) return;
            deliveries.push_back(std::this_thread::get_id());
        }
        struct Leave {
            Registration& registration;
            ~Leave() {
                std::lock_guard lock(registration.mutex);
                registration.deliveries.erase(
                    std::ranges::find(registration.deliveries, std::this_thread::get_id()));
                registration.delivered.notify_all();
            }
        } leave{*this};
        observer();
    }

    void cancelAndWait() {
        std::unique_lock lock(mutex);
        isCancelled = true;
        if (std::ranges::find(deliveries, std::this_thread::get_id()) != deliveries.end()) return;
        delivered.wait(lock, [this] { return deliveries.empty(); });
    }
};

class NotificationCenter::State {
  public:
    using Registration = std::shared_ptr<Observation::Registration>;

    void add(Registration registration) {
        std::lock_guard lock(mutex_);
        registrations_.push_back(std::move(registration));
    }
    void remove(const Observation::Registration* registration) {
        std::lock_guard lock(mutex_);
        std::erase_if(registrations_, [=](const Registration& each) { return each.get() == registration; });
    }
    std::vector<Registration> observersOf(std::string_view name) const {
        std::vector<Registration> found;
        std::lock_guard lock(mutex_);
        std::ranges::copy_if(registrations_, std::back_inserter(found),
                             [name](const Registration& each) { return each->name == name; });
        return found;
    }

  private:
    mutable std::mutex mutex_;
    std::vector<Registration> registrations_;
};

NotificationCenter::Observation::Observation() = default;
NotificationCenter::Observation::Observation(std::shared_ptr<Registration> registration)
    : registration_(std::move(registration)) {}
NotificationCenter::Observation::Observation(Observation&&) noexcept = default;
NotificationCenter::Observation& NotificationCenter::Observation::operator=(Observation&& other) noexcept {
    if (this != &other) {
        cancel();
        registration_ = std::move(other.registration_);
    }
    return *this;
}
NotificationCenter::Observation::~Observation() {
    cancel();
}

void NotificationCenter::Observation::cancel() {
    auto registration = std::exchange(registration_, nullptr);
    if (!registration) return;
    if (auto centre = registration->centre.lock()) centre->remove(registration.get());
    registration->cancelAndWait();
}

NotificationCenter::NotificationCenter() : state_(std::make_shared<State>()) {}
NotificationCenter::~NotificationCenter() = default;

NotificationCenter& NotificationCenter::shared() {
    // Never destroyed: other static objects may post or cancel while the process ends.
    static auto* centre = new NotificationCenter;
    return *centre;
}

NotificationCenter::Observation NotificationCenter::observe(std::string_view name,
                                                            std::function<void()> observer) {
    auto registration = std::make_shared<Observation::Registration>();
    registration->name = name;
    registration->observer = std::move(observer);
    registration->centre = state_;
    state_->add(registration);
    return Observation(std::move(registration));
}

void NotificationCenter::post(std::string_view name) {
    for (const auto& registration : state_->observersOf(name))
        registration->deliver();
}

}  // namespace platform
