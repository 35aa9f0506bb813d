#include <HbrUtils/Unused/CombineLatest.h>

#include <gmock/gmock.h>
#include <support/Threads.h>

namespace {

using namespace hbr;
using platform::ValueSubject;
using testing::ElementsAre;

struct Six {
    ValueSubject<int> a, b, c, d, e;
    ValueSubject<std::string> f;

    CombineLatest5<int, int, int, int, int> five() const {
        return {a.stream(), b.stream(), c.stream(), d.stream(), e.stream()};
    }
    CombineLatest6<int, int, int, int, int, std::string> six() const {
        return {a.stream(), b.stream(), c.stream(), d.stream(), e.stream(), f.stream()};
    }
    void sendNumbers() {
        int number = 0;
        for (auto* subject : {&a, &b, &c, &d, &e})
            subject->send(++number);
    }
};

TEST(CombineLatest, SendsOnceEachHasAValueAndThenAtEveryValueWhileSubscribed) {
    Six from;
    std::vector<std::tuple<int, int, int, int, int>> fives;
    std::vector<std::tuple<int, int, int, int, int, std::string>> sixes;
    auto five = from.five().subscribe([&](const auto& value) { fives.push_back(value); });
    const auto six = from.six().subscribe([&](const auto& value) { sixes.push_back(value); });
    from.a.send(-1);
    from.sendNumbers();
    EXPECT_THAT(sixes, ElementsAre());
    from.f.send("f");
    from.c.send(33);
    five = {};
    from.sendNumbers();
    EXPECT_THAT(fives, ElementsAre(std::tuple(1, 2, 3, 4, 5), std::tuple(1, 2, 33, 4, 5)));
    ASSERT_EQ(sixes.size(), 7u);
    EXPECT_EQ(sixes[0], std::tuple(1, 2, 3, 4, 5, "f"));
    EXPECT_EQ(sixes[1], std::tuple(1, 2, 33, 4, 5, "f"));
}

TEST(CombineLatest, FinishesWithTheLastStreamOrWithOneThatNeverSent) {
    Six from;
    int finished = 0;
    std::vector<std::tuple<int, int, int, int, int>> values;
    const auto subscription =
        from.five().subscribe([&](const auto& value) { values.push_back(value); }, [&] { ++finished; });
    from.sendNumbers();
    for (auto* subject : {&from.a, &from.b, &from.c, &from.d})
        subject->finish();
    EXPECT_EQ(finished, 0);
    from.e.send(55);
    from.e.finish();
    EXPECT_EQ(finished, 1);
    EXPECT_THAT(values, ElementsAre(std::tuple(1, 2, 3, 4, 5), std::tuple(1, 2, 3, 4, 55)));

    Six silent;
    const auto other = silent.six().subscribe([](const auto&) {}, [&] { ++finished; });
    silent.b.finish();
    EXPECT_EQ(finished, 2);
}

TEST(CombineLatest, ValuesSentAtOnceByThreadsLoseNoLastValue) {
    Six from;
    std::tuple<int, int, int, int, int> last;
    const auto subscription = from.five().subscribe([&](const auto& value) { last = value; });
    ValueSubject<int>* const subjects[] = {&from.a, &from.b, &from.c, &from.d, &from.e};
    test::onThreads(5, [&](int index) {
        for (int i = 1; i <= 200; ++i)
            subjects[index]->send(i);
    });
    EXPECT_EQ(last, std::tuple(200, 200, 200, 200, 200));
}

}  // namespace
