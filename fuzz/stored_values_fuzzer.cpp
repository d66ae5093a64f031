#include <cstddef>
#include <cstdint>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "dialog/frm_main.h"
#include "dialog/remembered_options.h"
#include "fuzz/require.h"
#include "mervane/convert.h"
#include "mervane/failure.h"
#include "platform/headless/headless_error_window.h"
#include "platform/headless/headless_option_window.h"
#include "platform/key_store.h"
#include "support/globals.h"
#include "support/validation.h"

/// Whatever lies in the settings store loads to a dialog that can be used, and what that dialog stores is what the
/// next one shows.
namespace mervane {
namespace {

/// One key for everything: the names of the two sections do not meet.
class LooseStore final : public platform::KeyStore {
 public:
  struct Value {
    std::uint32_t type;
    std::vector<std::uint8_t> bytes;
  };

  std::int32_t RegOpenKeyExA(std::uint32_t, const std::string&, std::uint32_t, std::uint32_t, Handle& key) override {
    key = 1;
    return success;
  }
  std::int32_t RegCreateKeyExA(std::uint32_t, const std::string&, std::uint32_t, Handle& key, std::uint32_t&) override {
    key = 1;
    return success;
  }
  std::int32_t RegCloseKey(Handle) override { return success; }
  std::int32_t RegQueryValueExA(Handle, const std::string& name, std::uint32_t& type, std::uint8_t* data,
                                std::uint32_t& size) override {
    const auto found = values.find(name);
    if (found == values.end()) return notFound;
    const std::uint32_t room = size;
    type = found->second.type;
    size = static_cast<std::uint32_t>(found->second.bytes.size());
    if (data == nullptr) return success;
    if (room < size) return moreData;
    if (size != 0) std::memcpy(data, found->second.bytes.data(), size);
    return success;
  }
  std::int32_t RegSetValueExA(Handle, const std::string& name, std::uint32_t type, const std::uint8_t* data,
                              std::uint32_t size) override {
    values[name] = {type, std::vector<std::uint8_t>(data, data + size)};
    return success;
  }
  std::int32_t RegQueryInfoKeyA(Handle, std::uint32_t&) override { return accessDenied; }
  std::int32_t RegEnumValueA(Handle, std::uint32_t, char*, std::uint32_t&) override { return noMoreItems; }
  std::int32_t RegDeleteKeyA(std::uint32_t, const std::string&) override { return accessDenied; }

  std::map<std::string, Value> values;
};

class StillClock final : public platform::Clock {
 public:
  Date now() override { return {38425.5}; }
};

class StillScreen final : public platform::Screen {
 public:
  void pointer(std::int32_t) override {}
  void beep() override {}
};

/// The bytes of the input, and none when they are used up.
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : data_(data), size_(size) {}
  std::uint8_t byte() { return size_ == 0 ? std::uint8_t{0} : (--size_, *data_++); }
  std::vector<std::uint8_t> bytes(std::size_t count) {
    const std::size_t taken = count < size_ ? count : size_;
    std::vector<std::uint8_t> result(data_, data_ + taken);
    data_ += taken;
    size_ -= taken;
    return result;
  }

 private:
  const std::uint8_t* data_;
  std::size_t size_;
};

std::string shown(const platform::OptionItem& item) {
  return toText(item.Value, globals::locale());
}

void requireUsable(frmMain& form) {
  const CValidation validation;
  MERVANE_REQUIRE(validation.ValidateLongRange(form.Clusters(), 1, 999));
  MERVANE_REQUIRE(validation.ValidateLongRange(form.Epochs(), 1, 99999));
  MERVANE_REQUIRE(validation.ValidateLongRange(form.StartLearningRadius(), 1, 999));
  MERVANE_REQUIRE(validation.ValidateDoubleRange(form.LearningRate(), 0.00001, 0.99999));
  MERVANE_REQUIRE(validation.ValidateDoubleRange(form.InitialWeights(), 0.00001, 0.99999));
  const auto& items = form.suiOptions();
  MERVANE_REQUIRE(items.Item("SPLITONE").Checked != items.Item("SPLITMULTIPLE").Checked);
  MERVANE_REQUIRE(!shown(items.Item("ACTIVATIONFUNCTION")).empty());
  (void)form.Inputs();
  (void)form.Outputs();
  try {
    (void)form.ActivationFunction();
  } catch (const Failure& failure) {
    // A code that is no number is kept, and fails where it is asked for.
    MERVANE_REQUIRE(failure.number() == runtime::typeMismatch.number || failure.number() == runtime::overflow.number);
  }
}

void play(Input input) {
  auto store = std::make_shared<LooseStore>();
  auto user = std::make_shared<platform::HeadlessUser>();
  user->habit([](platform::HeadlessOptionWindow& window) { window.press("CLASSIFY"); });
  auto services = std::make_shared<platform::Services>();
  services->keyStore = store;
  services->clock = std::make_shared<StillClock>();
  services->screen = std::make_shared<StillScreen>();
  services->createOptionWindow = platform::headlessOptionWindows(user);
  services->createErrorWindow =
      platform::headlessErrorWindows([](platform::HeadlessErrorWindow::View& view) { view.click("ABORT"); });
  constexpr const char* locales[] = {"en-US", "de-DE", "fr-FR", "de-CH", "sv-SE"};
  services->locale = localeNamed(locales[input.byte() % 5]);
  globals::release();
  globals::platform(services);
  globals::errorHandler().Init(ehaErrorForm, "Error Log.txt", true, false, tfLogFile, "Tracing Log.txt");

  for (const dialog::RememberedOption& option : dialog::rememberedOptions()) {
    const std::uint8_t form = input.byte();
    const std::uint8_t size = input.byte();
    if (form % 8 == 0) continue;
    const std::uint32_t type = form % 8 < 5   ? platform::KeyStore::typeText
                               : form % 8 < 7 ? platform::KeyStore::typeInteger
                                              : static_cast<std::uint32_t>(form / 8);
    store->values[option.key] = {type, input.bytes(size % 40)};
  }

  frmMain first;
  requireUsable(first);
  first.Show();
  MERVANE_REQUIRE(first.Tag() == "CLASSIFY");
  requireUsable(first);

  frmMain second;
  requireUsable(second);
  for (const platform::OptionItem& item : first.suiOptions()) {
    if (item.Key.empty()) continue;
    const platform::OptionItem& again = second.suiOptions().Item(item.Key);
    MERVANE_REQUIRE(shown(again) == shown(item));
    MERVANE_REQUIRE(again.Checked == item.Checked);
    MERVANE_REQUIRE(again.Expanded == item.Expanded);
  }
  globals::release();
}

}  // namespace
}  // namespace mervane

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  mervane::play(mervane::Input(data, size));
  return 0;
}
