#pragma once

#include "ContactIndex.h"

#include <System/Diagnostics.h>
#include <System/FileStamp.h>
#include <Values/ImageBytes.h>

#include <deque>
#include <memory>
#include <mutex>
#include <optional>

namespace platform {

/// Reads the picture of a card from its file and keeps the last ones. Safe from any thread.
class PictureReader {
  public:
    explicit PictureReader(std::shared_ptr<DiagnosticsSink> diagnostics)
        : diagnostics_(std::move(diagnostics)) {}

    /// Nothing when the card has none that can be used, or was changed since it was read.
    std::optional<ImageBytes> read(const CardPlace& place);

  private:
    struct Kept {
        std::filesystem::path file;
        std::size_t begin = 0;
        FileStamp stamp;
        std::optional<ImageBytes> picture;
    };

    std::optional<ImageBytes> fromFile(const CardPlace& place) const;

    std::shared_ptr<DiagnosticsSink> diagnostics_;
    std::mutex mutex_;
    std::deque<Kept> kept_;
};

}  // namespace platform
