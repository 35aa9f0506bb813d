#pragma once

#include <glib.h>

#include <memory>

namespace platform {

struct SourceEnd {
    void operator()(GSource* source) const {
        g_source_destroy(source);
        g_source_unref(source);
    }
};
/// A source of the main context, which ends with it.
using MainSource = std::unique_ptr<GSource, SourceEnd>;

}  // namespace platform
