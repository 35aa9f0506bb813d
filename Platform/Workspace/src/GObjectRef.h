#pragma once

#include <gio/gio.h>

#include <memory>

namespace platform {

struct GObjectRelease {
    void operator()(void* object) const { g_object_unref(object); }
};
template <class T>
using GObjectRef = std::unique_ptr<T, GObjectRelease>;

struct GErrorRelease {
    void operator()(GError* error) const { g_error_free(error); }
};
using GErrorRef = std::unique_ptr<GError, GErrorRelease>;

struct GVariantRelease {
    void operator()(GVariant* value) const { g_variant_unref(value); }
};
using GVariantRef = std::unique_ptr<GVariant, GVariantRelease>;

}  // namespace platform
