#include <HbrUtils/CalendarItemReaders.h>

#include <gtest/gtest.h>

namespace {

using namespace hbr;

TEST(CalendarItemReaders, OwnerAddressIsTheFirstMailAddress) {
    platform::EKCalendar calendar;
    EXPECT_EQ(ownerEmailAddress(calendar), std::nullopt);
    EXPECT_FALSE(isDelegate(calendar));
    auto source = std::make_shared<platform::EKSource>();
    source->isDelegate = true;
    source->ownerAddresses = {"urn:uuid:1", "mailto:ann@example.org", "mailto:a@example.org"};
    calendar.source = source;
    EXPECT_EQ(ownerEmailAddress(calendar), "ann@example.org");
    EXPECT_TRUE(isDelegate(calendar));
}

TEST(CalendarItemReaders, NoListOfAlarmsAndAnEmptyOneAreTheSame) {
    platform::EKEvent event;
    EXPECT_FALSE(hasAlerts(event));
    event.alarms.emplace();
    EXPECT_FALSE(hasAlerts(event));
    event.alarms->push_back({});
    EXPECT_TRUE(hasAlerts(event));
}

}  // namespace
