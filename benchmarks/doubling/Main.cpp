// The doubling test: input that is twice as long may take 2.5 times the processor time at most. Every
// property and parameter of calendar items and of cards grows, in each of the ways of Growing.h, on its way
// from the file to the event, its calls, its card and the names of its participants. Prints what takes
// longer, and ends with 1 then.
//
//     heedbanner-doubling [PART-OF-A-NAME ...]      --list names the cases, --all prints each result

#include "DoublingCases.h"

#include <Accounts/AccountSources.h>
#include <CalendarStore/EKEventStore.h>
#include <ContactStore/CNContactStore.h>
#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <HbrCore/CoreServices.h>
#include <HbrCore/Events/Event.h>
#include <HeedbannerWidgetExtension/HeedbannerWidgetBundle.h>
#include <System/NotificationCenter.h>
#include <support/TestEnvironment.h>

#include <CardTexts.h>
#include <EventCard.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <future>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace {

using doubling::Case;

constexpr double mostTimes = 2.5;
/// Shorter times are too uncertain to compare, or do no harm.
constexpr double measurableSeconds = 0.02;
constexpr double enoughSeconds = 0.06;
constexpr int enoughDoublings = 3;
constexpr int mostDoublings = 4;
/// Of the largest input, where it was not doubled often enough.
constexpr double harmfulSeconds = 0.5;
constexpr double hopelessSeconds = 20;
constexpr std::size_t smallest = std::size_t{16} << 10;
constexpr int repetitions = 3;

double processorSeconds() {
    timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

/// Everything that a program does with the events of a day and the tasks of a year.
void useCalendar(const platform::EnvironmentRef& environment) {
    hbr::CoreServices core(environment, {});
    const hbr::HeedbannerWidgetBundle bundle(environment, [&core]() -> hbr::CoreServices& { return core; });
    const hbr::CardTexts texts(core, bundle);
    core.manager().activateAllCalendars();
    hbr::reloadAndWait(core);
    platform::NotificationCenter center;
    platform::EKEventStore store(environment, center,
                                 std::make_shared<platform::AccountSources>(environment));
    const auto now = environment->now();
    const auto from = now.addingTimeInterval(-86400);
    const auto to = now.addingTimeInterval(86400);
    // What is shown are a few of them.
    constexpr std::size_t shown = 8;
    std::size_t count = 0;
    for (const auto& record :
         store.events(store.predicateForEvents(from, to, store.calendars(platform::EKEntityType::event)))) {
        const auto event = hbr::Event::fromCalendarEvent(*record, core.parser());
        if (++count > shown) continue;
        hbr::eventCard(core, texts, event, {});
        hbr::callChoiceCard(texts, event, event.videoConferenceLinks, {});
    }
    std::promise<void> done;
    store.fetchReminders(
        store.predicateForIncompleteReminders(from, to, store.calendars(platform::EKEntityType::reminder)),
        [&](const auto&) { done.set_value(); });
    done.get_future().wait();
}

void useCards(const platform::EnvironmentRef& environment, const std::filesystem::path& file) {
    const platform::CNContactStore store(
        environment,
        {.load = [&] { return std::vector<platform::ContactSource>{{"Cards", file}}; }, .definedIn = {}});
    for (const auto* email : {"ann@example.org", "nobody@example.org"}) {
        store.unifiedContacts({.email = email, .name = "Ann Doe"},
                              {platform::CNContactGivenNameKey, platform::CNContactThumbnailImageDataKey});
    }
}

double secondsOf(const Case& one, std::size_t size) {
    const test::TestEnvironment environment;
    const bool isCalendar = one.kind == Case::Kind::calendar;
    const auto file = environment.home.write(isCalendar ? "a.ics" : "a.vcf", one.file(size));
    if (isCalendar) {
        platform::AccountsFile(environment).update([&](std::vector<platform::Account>& accounts) {
            accounts.push_back({.name = "Home", .location = file, .addresses = {}});
        });
    }
    const double begin = processorSeconds();
    isCalendar ? useCalendar(environment) : useCards(environment, file);
    return processorSeconds() - begin;
}

double leastSecondsOf(const Case& one, std::size_t size) {
    double least = secondsOf(one, size);
    for (int i = 1; i < repetitions && least < hopelessSeconds / 10; ++i)
        least = std::min(least, secondsOf(one, size));
    return least;
}

/// How much longer each doubling takes, on average of several: one alone may be the step to slower memory.
double timesOfADoubling(double first, double last, int doublings) {
    return first <= 0 ? 0 : std::pow(last / first, 1.0 / doublings);
}

/// Doubles the input some times from the size on at which its time can be measured.
bool grows(const Case& one, double alone, bool printsAll) {
    const auto secondsWithout = [&](std::size_t size) { return leastSecondsOf(one, size) - alone; };
    std::size_t first = smallest;
    double firstSeconds = secondsOf(one, first) - alone;
    while (firstSeconds < measurableSeconds && first * 2 <= one.largest)
        firstSeconds = secondsOf(one, first *= 2) - alone;
    std::size_t last = first;
    double lastSeconds = firstSeconds;
    int doublings = 0;
    while (doublings < mostDoublings && last * 2 <= one.largest && lastSeconds < hopelessSeconds / 8) {
        lastSeconds = secondsOf(one, last *= 2) - alone;
        ++doublings;
    }
    double times = doublings == 0 ? 0 : timesOfADoubling(firstSeconds, lastSeconds, doublings);
    if (times > mostTimes) {
        firstSeconds = secondsWithout(first);
        lastSeconds = secondsWithout(last);
        times = timesOfADoubling(firstSeconds, lastSeconds, doublings);
    }
    const bool isCertain =
        doublings >= enoughDoublings ? lastSeconds > enoughSeconds : lastSeconds > harmfulSeconds;
    const bool isTooMuch = times > mostTimes && isCertain;
    if (isTooMuch || printsAll) {
        std::printf("%s %-60s %9zu bytes %8.0f ms  x %.2f\n", isTooMuch ? "TOO MUCH" : "ok      ",
                    one.name.c_str(), last, lastSeconds * 1000, times);
        std::fflush(stdout);
    }
    return isTooMuch;
}

bool isWanted(const std::string& name, const std::vector<std::string>& parts) {
    return parts.empty() || std::ranges::any_of(parts, [&](const std::string& part) {
               return name.find(part) != std::string::npos;
           });
}

}  // namespace

int main(int count, char** values) {
    std::vector<std::string> parts;
    bool printsAll = false;
    bool lists = false;
    for (const char* value : std::span(values, static_cast<std::size_t>(count)).subspan(1)) {
        const std::string_view argument = value;
        printsAll = printsAll || argument == "--all";
        lists = lists || argument == "--list";
        if (!argument.starts_with("--")) parts.emplace_back(argument);
    }
    auto cases = doubling::calendarCases();
    for (auto& one : doubling::cardCases())
        cases.push_back(std::move(one));
    std::erase_if(cases, [&](const Case& one) { return !isWanted(one.name, parts); });
    int tooMuch = 0;
    for (const auto& one : cases) {
        if (lists) {
            std::puts(one.name.c_str());
            continue;
        }
        const double alone = leastSecondsOf(one, 1);
        tooMuch += grows(one, alone, printsAll) ? 1 : 0;
    }
    if (!lists)
        std::printf("%zu cases, %d take more than %.1f times as long\n", cases.size(), tooMuch, mostTimes);
    return tooMuch == 0 ? 0 : 1;
}
