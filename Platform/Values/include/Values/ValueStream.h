#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <type_traits>
#include <utility>
#include <vector>

// Values that are sent as they come to be, to whoever subscribed. A stream ends once, and nothing comes after
// its end. Receivers are called on the sender's thread, one at a time and in the order of sending. Safe from
// any thread; a receiver may itself send, subscribe and unsubscribe where no other thread sends.
namespace platform {

/// Ends when destroyed; on another thread it waits for a call of its receiver that is under way.
class [[nodiscard]] StreamSubscription {
  public:
    StreamSubscription() = default;
    explicit StreamSubscription(std::function<void()> cancel) : cancel_(std::move(cancel)) {}
    StreamSubscription(StreamSubscription&& other) noexcept
        : cancel_(std::exchange(other.cancel_, nullptr)) {}
    StreamSubscription& operator=(StreamSubscription&& other) noexcept {
        if (this != &other) {
            cancel();
            cancel_ = std::exchange(other.cancel_, nullptr);
        }
        return *this;
    }
    ~StreamSubscription() { cancel(); }

    void cancel() {
        if (const auto cancelOnce = std::exchange(cancel_, nullptr)) cancelOnce();
    }

  private:
    std::function<void()> cancel_;
};

template <class T>
struct StreamReceiver {
    std::function<void(const T&)> value;
    std::function<void()> finished;
};

/// What can be subscribed to. Copies share the stream.
template <class T>
class ValueStream {
  public:
    using Output = T;
    using Subscribe = std::function<StreamSubscription(StreamReceiver<T>)>;

    explicit ValueStream(Subscribe subscribe) : subscribe_(std::move(subscribe)) {}

    StreamSubscription subscribe(
        std::function<void(const T&)> value, std::function<void()> finished = [] {}) const {
        return subscribe_({std::move(value), std::move(finished)});
    }
    template <class F>
    auto map(F transform) const {
        using Mapped = std::invoke_result_t<F, const T&>;
        return ValueStream<Mapped>([upstream = *this, transform](StreamReceiver<Mapped> receiver) {
            return upstream.subscribe(
                [transform, value = std::move(receiver.value)](const T& sent) { value(transform(sent)); },
                std::move(receiver.finished));
        });
    }

  private:
    Subscribe subscribe_;
};

/// The sending end of a stream. Who subscribes sees what is sent from then on.
template <class T>
class ValueSubject {
  public:
    void send(const T& value) {
        std::lock_guard lock(state_->mutex);
        for (const auto& receiver : std::vector(state_->receivers))
            if (state_->holds(receiver)) receiver->value(value);
    }
    void finish() {
        std::lock_guard lock(state_->mutex);
        state_->isFinished = true;
        for (const auto& receiver : std::exchange(state_->receivers, {}))
            receiver->finished();
    }
    ValueStream<T> stream() const {
        return ValueStream<T>([state = state_](StreamReceiver<T> receiver) {
            std::lock_guard lock(state->mutex);
            if (state->isFinished) {
                receiver.finished();
                return StreamSubscription();
            }
            auto held = std::make_shared<const StreamReceiver<T>>(std::move(receiver));
            state->receivers.push_back(held);
            return StreamSubscription([state, held] {
                std::lock_guard cancelLock(state->mutex);
                std::erase(state->receivers, held);
            });
        });
    }

  private:
    struct State {
        std::recursive_mutex mutex;
        std::vector<std::shared_ptr<const StreamReceiver<T>>> receivers;
        bool isFinished = false;

        bool holds(const std::shared_ptr<const StreamReceiver<T>>& receiver) const {
            return std::ranges::find(receivers, receiver) != receivers.end();
        }
    };
    std::shared_ptr<State> state_ = std::make_shared<State>();
};

}  // namespace platform
