#include "Expect.h"

#include <CollectionIndex.h>
#include <TimeAndText/Date.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace {

using namespace platform;

using Occurrence = std::pair<std::string, double>;

class Collection {
  public:
    Collection(std::string bytes, const EKCalendarRef& calendar) : calendar_(calendar) {
        auto file =
            std::make_shared<const ScannedFile>(scanItems("a.ics", std::move(bytes), *diagnostics_, zones_));
        static const Calendar berlin(TimeZone::named("Europe/Berlin").value());
        index_ = std::make_unique<CollectionIndex>(
            std::vector{std::move(file)}, "fuzzed",
            CollectionSettings{berlin, "/usr/share/zoneinfo", {"me@example.org"}, diagnostics_});
    }

    std::multiset<Occurrence> eventsTouching(Date from, Date to) const {
        std::vector<EKEventRef> events;
        index_->appendEvents(from, to, calendar_, events);
        std::multiset<Occurrence> occurrences;
        for (const auto& event : events) {
            expect(event->endDate >= event->startDate, "an event ends at its start or later");
            expect(event->startDate <= to && event->endDate >= from, "an event touches the interval");
            expect(event->eventIdentifier.find_first_not_of("0123456789abcdefghijklmnopqrstuvwxyz-") ==
                       std::string::npos,
                   "an identifier has plain characters");
            occurrences.emplace(event->eventIdentifier, event->startDate.timeIntervalSinceReferenceDate());
        }
        return occurrences;
    }
    void askForTasks(Date from, Date to) const {
        std::vector<EKReminderRef> tasks;
        index_->appendOpenTasks(from, to, from, calendar_, tasks);
        for (const auto& task : tasks)
            expect(task->dueDate && *task->dueDate >= from && *task->dueDate <= to, "a task is due then");
    }
    bool leftSomethingOut() const {
        for (const auto& reported : diagnostics_->all())
            if (reported.text.find("too many") != std::string::npos) return true;
        return false;
    }

  private:
    EKCalendarRef calendar_;
    ZonePool zones_;
    std::shared_ptr<CollectedDiagnostics> diagnostics_ = std::make_shared<CollectedDiagnostics>();
    std::unique_ptr<CollectionIndex> index_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const auto calendar = std::make_shared<const EKCalendar>();
    static const Date march = parseRfc3339("2026-03-25T00:00:00Z").value();
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    const auto day = [](int number) { return march.addingTimeInterval(number * 86400.0); };
    // Rules of seconds are answered up to the bound, which is much for a sanitizer.
    if (bytes.find("ONDLY") != std::string::npos) return -1;

    const Collection asked(bytes, calendar);
    asked.eventsTouching(day(0), day(14));
    const auto afterAWiderQuestion = asked.eventsTouching(day(3), day(6));
    asked.eventsTouching(day(40'000), day(40'007));
    asked.askForTasks(day(0), day(14));

    const Collection fresh(bytes, calendar);
    const auto atOnce = fresh.eventsTouching(day(3), day(6));
    if (!asked.leftSomethingOut() && !fresh.leftSomethingOut())
        expect(afterAWiderQuestion == atOnce, "an answer does not depend on what was asked before");
    return 0;
}
