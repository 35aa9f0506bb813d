#pragma once

#include <Values/ValueStream.h>

#include <cstddef>
#include <memory>
#include <mutex>
#include <optional>
#include <tuple>
#include <utility>
#include <vector>

namespace platform {

namespace detail {

template <class... T>
class Combination {
  public:
    explicit Combination(StreamReceiver<std::tuple<T...>> receiver) : receiver_(std::move(receiver)) {}

    template <std::size_t i, class Value>
    void take(const Value& value) {
        std::lock_guard lock(mutex_);
        std::get<i>(latest_) = value;
        const auto deliver = [this](const auto&... held) {
            if (unfinished_ > 0 && (held.has_value() && ...)) receiver_.value(std::tuple<T...>(*held...));
        };
        std::apply(deliver, latest_);
    }
    template <std::size_t i>
    void finish() {
        std::lock_guard lock(mutex_);
        if (unfinished_ == 0) return;
        unfinished_ = std::get<i>(latest_) ? unfinished_ - 1 : 0;
        if (unfinished_ == 0) receiver_.finished();
    }

  private:
    std::recursive_mutex mutex_;
    std::tuple<std::optional<T>...> latest_;
    std::size_t unfinished_ = sizeof...(T);
    StreamReceiver<std::tuple<T...>> receiver_;
};

}  // namespace detail

/// The latest value of each of two to four streams: first when each has sent one, then whenever one sends
/// another. Finished when all are, or when one ends that never sent a value.
template <class... T>
    requires(sizeof...(T) >= 2 && sizeof...(T) <= 4)
ValueStream<std::tuple<T...>> combineLatest(const ValueStream<T>&... upstreams) {
    using Receiver = StreamReceiver<std::tuple<T...>>;
    return ValueStream<std::tuple<T...>>([upstreams...](Receiver receiver) {
        auto combination = std::make_shared<detail::Combination<T...>>(std::move(receiver));
        auto held = std::make_shared<std::vector<StreamSubscription>>();
        const auto subscribeAll = [&]<std::size_t... i>(std::index_sequence<i...>) {
            (held->push_back(
                 upstreams.subscribe([combination](const T& value) { combination->template take<i>(value); },
                                     [combination] { combination->template finish<i>(); })),
             ...);
        };
        subscribeAll(std::index_sequence_for<T...>{});
        return StreamSubscription([held] { held->clear(); });
    });
}

}  // namespace platform
