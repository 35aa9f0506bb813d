#pragma once

#include <Values/CombinedStream.h>

#include <functional>
#include <tuple>
#include <utility>

// The latest values of five or six streams as one flat tuple, by the rules of platform::combineLatest.
namespace hbr {

template <class A, class B, class C, class D, class E>
struct CombineLatest5 {
    using Output = std::tuple<A, B, C, D, E>;

    platform::ValueStream<A> a;
    platform::ValueStream<B> b;
    platform::ValueStream<C> c;
    platform::ValueStream<D> d;
    platform::ValueStream<E> e;

    platform::StreamSubscription subscribe(
        std::function<void(const Output&)> value, std::function<void()> finished = [] {}) const {
        return platform::combineLatest(platform::combineLatest(a, b, c, d), e)
            .map([](const auto& nested) {
                return std::tuple_cat(std::get<0>(nested), std::tuple(std::get<1>(nested)));
            })
            .subscribe(std::move(value), std::move(finished));
    }
};

template <class A, class B, class C, class D, class E, class F>
struct CombineLatest6 {
    using Output = std::tuple<A, B, C, D, E, F>;

    platform::ValueStream<A> a;
    platform::ValueStream<B> b;
    platform::ValueStream<C> c;
    platform::ValueStream<D> d;
    platform::ValueStream<E> e;
    platform::ValueStream<F> f;

    platform::StreamSubscription subscribe(
        std::function<void(const Output&)> value, std::function<void()> finished = [] {}) const {
        return platform::combineLatest(platform::combineLatest(a, b, c, d), platform::combineLatest(e, f))
            .map([](const auto& nested) { return std::tuple_cat(std::get<0>(nested), std::get<1>(nested)); })
            .subscribe(std::move(value), std::move(finished));
    }
};

}  // namespace hbr
