#pragma once

#include <MxLogger/MxLogger.h>

#include <fcntl.h>
#include <unistd.h>

#include <string>
#include <vector>

namespace test {

/// Records what is logged while it lives, and writes it nowhere.
class LogCapture {
  public:
    LogCapture() {
        hbr::MxLogger::setOutput(file_);
        hbr::MxLogger::clear();
        hbr::MxLogger::start(true);
    }
    ~LogCapture() {
        hbr::MxLogger::stop();
        hbr::MxLogger::setOutput(STDOUT_FILENO);
        close(file_);
    }
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Without stamps and markers: "INFO [EventKit]: text".
    static std::vector<std::string> lines() {
        std::vector<std::string> list;
        for (const std::string& line : hbr::MxLogger::logMessages())
            list.push_back(line.substr(line.find_first_of("DEIW", 20)));
        return list;
    }

  private:
    int file_ = open("/dev/null", O_WRONLY | O_CLOEXEC);
};

}  // namespace test
