#include <HbrCore/Events/Attendance.h>
#include <gtest/gtest.h>

namespace {

using namespace hbr;
using Status = platform::EKParticipantStatus;

TEST(Attendance, TheUsersAnswerDecidesByTheSetting) {
    const std::tuple<Status, bool, bool> cases[] = {
        {Status::unknown, true, false},    {Status::pending, true, false},
        {Status::accepted, true, true},    {Status::declined, false, false},
        {Status::tentative, true, false},  {Status::delegated, false, false},
        {Status::completed, false, false}, {Status::inProcess, true, true}};
    for (const auto& [status, counts, countsWhenOnlyAccepted] : cases) {
        platform::EKEvent event;
        platform::EKParticipant other;
        other.participantStatus = Status::declined;
        platform::EKParticipant user;
        user.participantStatus = status;
        user.isCurrentUser = true;
        event.attendees = {other, user};
        EXPECT_EQ(isAttending(event, {false, false}), counts) << static_cast<int>(status);
        EXPECT_EQ(isAttending(event, {false, true}), countsWhenOnlyAccepted) << static_cast<int>(status);
        event.attendees = {other};
        EXPECT_TRUE(isAttending(event, {false, true}));
    }
}

TEST(Attendance, WhatIsScheduled) {
    platform::EKEvent event;
    event.alarms = std::vector<platform::EKAlarm>();
    EXPECT_TRUE(shouldSchedule(event, {false, false}));
    EXPECT_FALSE(shouldSchedule(event, {true, false}));
    event.alarms->emplace_back();
    EXPECT_TRUE(shouldSchedule(event, {true, false}));
    event.status = platform::EKEventStatus::canceled;
    EXPECT_FALSE(shouldSchedule(event, {false, false}));
    event.status = platform::EKEventStatus::confirmed;
    event.isAllDay = true;
    EXPECT_FALSE(shouldSchedule(event, {false, false}));

    platform::EKReminder task;
    task.alarms = std::vector<platform::EKAlarm>();
    EXPECT_FALSE(shouldSchedule(task));
    task.dueDateComponents = platform::DateComponents{};
    EXPECT_TRUE(shouldSchedule(task));
    task.alarms.reset();
    EXPECT_FALSE(shouldSchedule(task));
    task.alarms = std::vector<platform::EKAlarm>();
    task.isCompleted = true;
    EXPECT_FALSE(shouldSchedule(task));
}

}  // namespace
