// What finding conference links costs: over the notes of invitations, over texts made to be slow, and over a
// text that was seen before; below it the floor: looking once at every byte.

#include <HbrCore/ConferenceLinks/VideoConferenceLinkParser.h>
#include <System/Environment.h>
#include <TimeAndText/LinkDetector.h>
#include <TimeAndText/Text.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <benchmark/benchmark.h>

namespace {

/// A parser with the shipped services, in a home of its own that goes with it.
class ParserHome {
  public:
    ParserHome() {
        std::string name = (std::filesystem::temp_directory_path() / "heedbanner-links-XXXXXX").string();
        if (!mkdtemp(name.data())) throw std::runtime_error("no temporary directory");
        home_ = name;
        auto world = std::make_shared<platform::Environment>();
        world->programName = "benchmark";
        world->dataDirectory = home_ / "heedbanner";
        world->resourceDirectories = {HEEDBANNER_BUILD_RESOURCES};
        parser_ = std::make_unique<hbr::VideoConferenceLinkParser>(std::move(world));
    }
    ~ParserHome() {
        std::error_code ignored;
        std::filesystem::remove_all(home_, ignored);
    }
    ParserHome(const ParserHome&) = delete;
    ParserHome& operator=(const ParserHome&) = delete;
    const hbr::VideoConferenceLinkParser& parser() const { return *parser_; }

  private:
    std::filesystem::path home_;
    std::unique_ptr<hbr::VideoConferenceLinkParser> parser_;
};

const hbr::VideoConferenceLinkParser& parser() {
    static const ParserHome home;
    return home.parser();
}

/// Notes as they stand in calendars: agendas, minutes, and the blocks that conference services append.
std::string notes(std::size_t number) {
    static constexpr auto agenda = std::to_array<std::string_view>(
        {"Hi all,\n\nplease find below the agenda for our weekly. Minutes of last time are in the shared "
         "folder; "
         "add what is missing before 10.30, e.g. numbers of Q3 (v2.1) and the open points with finance.\n\n"
         "1. Welcome, round of news\n2. Release 1.4.2: what is left, who tests (report.pdf in the folder)\n"
         "3. Hiring: two offers are out, one answer is due on Friday\n4. Any other business\n\nKind regards, "
         "Ann\n",
         "Quarterly review with the board. The deck is at https://docs.example.org/d/1AbC/edit#slide=3 and "
         "the "
         "figures at https://docs.example.org/s/2DeF; questions to ann.doe@example.org, please.\nRoom 4.12 "
         "is "
         "booked from 9:00 to 12:30, lunch follows. Parking behind the house, ask at the desk "
         "(tel:+49-30-1234).\n",
         "Приветствую! Повестка: итоги недели, планы, разное. "
         "会議の資料は共有フォルダにあります。よろしくお願いします。\n"});
    static constexpr auto blocks = std::to_array<std::string_view>(
        {"\nAnn Doe is inviting you to a scheduled Zoom meeting.\n\nJoin Zoom Meeting\n"
         "https://us02web.zoom.us/j/8551234%?pwd=Zk9ZaTNvbXBhc3M.1\n\nMeeting ID: 855 1234 5678\nPasscode: "
         "123456\n\n"
         "---\n\nOne tap mobile\n+13017158592,,85512345678#,,,,*123456# US (Washington DC)\n+13052241968,,"
         "85512345678#,,,,*123456# US\n\n---\n\nDial by your location\n• +1 301 715 8592 US (Washington DC)\n"
         "• +1 305 224 1968 US\n• +49 69 7104 9922 Germany\n\nFind your local number: "
         "https://us02web.zoom.us/u/kdAbCdEf\n",
         "\n________________________________________________________________________________\nMicrosoft "
         "Teams "
         "meeting\nJoin on your computer, mobile app or room device\nClick here to join the "
         "meeting<https://teams."
         "microsoft.com/l/meetup-join/19%3ameeting_NzQ%%40thread.v2/"
         "0?context=%7b%22Tid%22%3a%22d6af3688-d7cf%22%2c"
         "%22Oid%22%3a%22a2b7-4a2e%22%7d>\nMeeting ID: 365 123 456 789\nPasscode: aB3dEf\nDownload "
         "Teams<https://"
         "www.microsoft.com/en-us/microsoft-teams/download-app> | Join on the web<https://www.microsoft.com/"
         "microsoft-teams/join-a-meeting>\nOr call in (audio only)\n+49 69 "
         "12345678,,123456789#<tel:+496912345678,,"
         "123456789#>   Germany, Frankfurt am Main\nPhone Conference ID: 123 456 789#\n",
         "\n-::~:~::~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~:~::~:~::-\nJoin with "
         "Google "
         "Meet: https://meet.google.com/abc-defg-hij\nOr dial: (DE) +49 30 300195061 PIN: 123456%#\nMore "
         "phone "
         "numbers: https://tel.meet/abc-defg-hij?pin=1234567890&hs=7\n\nLearn more about Meet at: "
         "https://support."
         "google.com/a/users/answer/9282720\n\nPlease do not edit this "
         "section.\n-::~:~::~:~:~:~:~:~:~:~::~:~::-\n",
         ""});
    std::string text(agenda[number % agenda.size()]);
    for (const char c : blocks[number % blocks.size()])
        c == '%' && number % 3 == 0 ? text += std::to_string(number) : text += c;
    return text;
}

std::vector<std::string> manyNotes(std::size_t from, std::size_t count) {
    std::vector<std::string> all;
    for (std::size_t i = 0; i < count; ++i)
        all.push_back(std::to_string(from + i) + ". " + notes(from + i));
    return all;
}

std::string repeated(std::string_view piece, std::size_t size) {
    std::string text;
    text.reserve(size + piece.size());
    while (text.size() < size)
        text += piece;
    return text;
}

void countBytes(benchmark::State& state, std::size_t bytes) {
    state.SetBytesProcessed(static_cast<std::int64_t>(state.iterations() * bytes));
}

/// Every text is new to the cache.
void notesParsedForTheFirstTime(benchmark::State& state) {
    constexpr std::size_t count = 500;
    std::size_t next = 0;
    std::size_t bytes = 0;
    std::size_t links = 0;
    for (auto _ : state) {
        state.PauseTiming();
        const auto texts = manyNotes(next, count);
        next += count;
        for (const auto& text : texts)
            bytes += text.size();
        state.ResumeTiming();
        for (const auto& text : texts)
            links += parser().parse(text).size();
    }
    if (links == 0) state.SkipWithError("no link found");
    state.SetBytesProcessed(static_cast<std::int64_t>(bytes));
}
BENCHMARK(notesParsedForTheFirstTime);

void notesThroughTheDetectorAlone(benchmark::State& state) {
    std::string text;
    for (const auto& one : manyNotes(0, 1000))
        text += one;
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::detectLinks(text));
    countBytes(state, text.size());
}
BENCHMARK(notesThroughTheDetectorAlone);

void notesSeenBefore(benchmark::State& state) {
    const std::string text = notes(static_cast<std::size_t>(state.range(0)));
    if (parser().parse(text).empty()) state.SkipWithError("no link found");
    for (auto _ : state)
        benchmark::DoNotOptimize(parser().parse(text));
    countBytes(state, text.size());
}
BENCHMARK(notesSeenBefore)->Arg(0)->Arg(1)->Arg(2);

void checksumOfTheSameNotes(benchmark::State& state) {
    const std::string text = notes(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::crc32(text));
    countBytes(state, text.size());
}
BENCHMARK(checksumOfTheSameNotes)->Arg(0)->Arg(1)->Arg(2);

void textWithoutLinks(benchmark::State& state) {
    const auto text = repeated(
        "Minutes are in the shared folder. We meet at ten, bring coffee, "
        "and tell the others what is left to do until Friday. ",
        1U << 20U);
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::detectLinks(text));
    countBytes(state, text.size());
}
BENCHMARK(textWithoutLinks);

void oneLookAtEveryByteOfIt(benchmark::State& state) {
    const auto text = repeated(
        "Minutes are in the shared folder. We meet at ten, bring coffee, "
        "and tell the others what is left to do until Friday. ",
        1U << 20U);
    for (auto _ : state)
        benchmark::DoNotOptimize(std::ranges::count(text, '.'));
    countBytes(state, text.size());
}
BENCHMARK(oneLookAtEveryByteOfIt);

/// The same rate at both sizes: the time is linear.
void hostileText(benchmark::State& state, std::string_view piece) {
    const auto text = repeated(piece, static_cast<std::size_t>(state.range(0)) * 1'000'000);
    for (auto _ : state)
        benchmark::DoNotOptimize(platform::detectLinks(text));
    countBytes(state, text.size());
}
#define HOSTILE(name, piece) \
    BENCHMARK_CAPTURE(hostileText, name, piece)->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond)
HOSTILE(a_dot_a, "a.");
HOSTILE(parentheses, "((((");
HOSTILE(schemes, "http://");
HOSTILE(hosts_and_parentheses, "http://a.com/(");
HOSTILE(mail_signs, "a@");
HOSTILE(glued_scripts, "a.comあ");

/// Detector and services over one link of that size.
void oneHugeLink(benchmark::State& state, std::string_view piece) {
    const auto text =
        "https://example.org/" + repeated(piece, static_cast<std::size_t>(state.range(0)) * 1'000'000);
    std::size_t round = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(parser().parse(text + std::to_string(round++)));
    countBytes(state, text.size());
}
BENCHMARK_CAPTURE(oneHugeLink, letters, "a")->Arg(1)->Arg(10)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(oneHugeLink, links_in_it, "/https://webex.com")
    ->Arg(1)
    ->Arg(10)
    ->Unit(benchmark::kMillisecond);

}  // namespace
