#include <TimeAndText/JoinedText.h>

namespace platform {

std::string joined(const std::vector<std::string>& texts, std::string_view separator) {
    std::string all;
    for (const std::string& text : texts) {
        if (&text != &texts.front()) all += separator;
        all += text;
    }
    return all;
}

}  // namespace platform
