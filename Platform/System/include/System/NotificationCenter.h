#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace platform {

/// Announcements without a payload, by name. Observers run on the posting thread, in the order of their
/// registration. Safe from any thread; an observer may add and remove observers.
class NotificationCenter {
  public:
    class State;

    /// A registration; ends when destroyed. Destruction on another thread waits for a delivery to this
    /// observer that is under way; inside its own delivery it returns at once.
    class [[nodiscard]] Observation {
      public:
        Observation();
        Observation(Observation&&) noexcept;
        Observation& operator=(Observation&&) noexcept;
        ~Observation();
        void cancel();

      private:
        friend class NotificationCenter;
        struct Registration;
        explicit Observation(std::shared_ptr<Registration> registration);
        std::shared_ptr<Registration> registration_;
    };

    NotificationCenter();
    ~NotificationCenter();
    NotificationCenter(const NotificationCenter&) = delete;
    NotificationCenter& operator=(const NotificationCenter&) = delete;

    /// The process's default centre.
    static NotificationCenter& shared();

    Observation observe(std::string_view name, std::function<void()> observer);
    void post(std::string_view name);

  private:
    std::shared_ptr<State> state_;
};

}  // namespace platform
