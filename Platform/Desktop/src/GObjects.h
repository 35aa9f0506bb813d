#pragma once

#include <glib-object.h>

#include <memory>
#include <utility>

namespace platform {

struct ObjectRelease {
    void operator()(gpointer object) const { g_object_unref(object); }
};
/// Owns one reference.
template <class T>
using Object = std::unique_ptr<T, ObjectRelease>;

template <class T>
Object<T> retained(T* object) {
    return Object<T>(object ? static_cast<T*>(g_object_ref(object)) : nullptr);
}

struct TextRelease {
    void operator()(char* text) const { g_free(text); }
};
using OwnedText = std::unique_ptr<char, TextRelease>;

struct VariantRelease {
    void operator()(GVariant* variant) const { g_variant_unref(variant); }
};
using Variant = std::unique_ptr<GVariant, VariantRelease>;

/// A handler on an object that lives longer than what handles.
class SignalConnection {
  public:
    SignalConnection(gpointer instance, const char* signal, GCallback handler, gpointer data)
        : instance_(retained(static_cast<GObject*>(instance))),
          handler_(g_signal_connect(instance, signal, handler, data)) {}
    SignalConnection(SignalConnection&& other) noexcept
        : instance_(std::move(other.instance_)), handler_(std::exchange(other.handler_, 0)) {}
    SignalConnection& operator=(SignalConnection&&) = delete;
    ~SignalConnection() {
        if (instance_ && handler_) g_signal_handler_disconnect(instance_.get(), handler_);
    }

  private:
    Object<GObject> instance_;
    gulong handler_;
};

}  // namespace platform
