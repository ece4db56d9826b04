// Kelos.WpfBridge: an embedded presentation control without a surface to be embedded in.

#include "automation/object.h"
#include "hostkit.h"
#include "hostkit/boundary.h"
#include "hostkit/classes.h"

namespace hostkit {
namespace {

using automation::ComPtr;

class WpfBridge
    : public automation::Object<WpfBridge,
                                automation::Extends<IHostKitWpfBridge, IKelosWpfBridge>> {
  public:
    STDMETHODIMP Move(long left, long top, long width, long height) override {
        return run<Watched>(Given(left, top, width, height), [&] {
            require_alive();
            left_ = left;
            top_ = top;
            width_ = width;
            height_ = height;
        });
    }
    STDMETHODIMP Shutdown() override {
        return run<Watched>([&] {
            require_alive();
            ended_ = true;
            events_.reset();
        });
    }
    STDMETHODIMP putref_Events(IKelosWpfBridgeEvents* value) override {
        return run<Watched>(Given(value), [&] {
            if (value) require_alive();
            events_ = value;
        });
    }

    STDMETHODIMP get_Left(long* result) override {
        return answer<Uncounted>(result, [&] { return left_; });
    }
    STDMETHODIMP get_Top(long* result) override {
        return answer<Uncounted>(result, [&] { return top_; });
    }
    STDMETHODIMP get_Width(long* result) override {
        return answer<Uncounted>(result, [&] { return width_; });
    }
    STDMETHODIMP get_Height(long* result) override {
        return answer<Uncounted>(result, [&] { return height_; });
    }
    STDMETHODIMP get_Ended(VARIANT_BOOL* result) override {
        return answer<Uncounted>(result, [&] { return as_variant_bool(ended_); });
    }
    STDMETHODIMP GainFocus() override {
        return run<Uncounted>([&] {
            require_alive();
            const ComPtr<IKelosWpfBridgeEvents> events = events_;
            if (events) automation::call(events, &IKelosWpfBridgeEvents::WPFGotFocus);
        });
    }

  private:
    void require_alive() const {
        if (ended_) automation::fail(E_UNEXPECTED, L"The embedded control has been shut down");
    }

    ComPtr<IKelosWpfBridgeEvents> events_;
    long left_ = 0;
    long top_ = 0;
    long width_ = 0;
    long height_ = 0;
    bool ended_ = false;
};

}  // namespace

ComPtr<IUnknown> create_wpf_bridge() {
    return automation::make<WpfBridge>()->main_interface();
}

}  // namespace hostkit
