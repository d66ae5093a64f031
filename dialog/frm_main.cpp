#include "dialog/frm_main.h"

#include <utility>

#include "dialog/designed_items.h"
#include "dialog/procedure_keys.h"
#include "dialog/remembered_options.h"
#include "mervane/convert.h"
#include "mervane/runtime_errors.h"
#include "mervane/version.h"
#include "support/globals.h"
#include "support/procedures.h"

namespace mervane {

namespace {
constexpr const char* windowCaption = "Mervane Kelvash";

std::string versionCaption() {
  return "Mervane Library Version: " + std::to_string(version::major) + "." + std::to_string(version::minor) + "." +
         std::to_string(version::revision);
}
}  // namespace

frmMain::frmMain() = default;
frmMain::~frmMain() = default;

// --- Life ---------------------------------------------------------------------------------------------------------

void frmMain::load() {
  if (loaded_) return;
  if (!globals::platform().createOptionWindow) raise(runtime::objectNotSet);
  auto window = globals::platform().createOptionWindow();
  if (!window) raise(runtime::objectNotSet);
  suiOptions_ = dialog::designedOptions();
  suiButtons_ = dialog::designedButtons();
  window->load(windowCaption, suiOptions_, suiButtons_, *this);
  window_ = std::move(window);
  loaded_ = true;
  Form_Load();
  changed();
}

void frmMain::Form_Load() {
  traced(dialog::key::Form_Load, [&](Steps& step) {
    // 1.
    step([&] { settings_ = std::make_unique<CAppSettings>(); });
    step([&] { settings().Init(dialog::companyName, dialog::applicationName); });
    // 2.
    step([&] { suiOptions_.Item("DLLVERSION").Caption = versionCaption(); });
    // 3.
    step([&] { LoadWindowSettings(); });
    // 4. Before the store is read, so that a key that the store lacks takes the default.
    step([&] { SetDefaultValues(); });
    // 5.
    step([&] { LoadParameterValues(); });
    // 6.
    step([&] { LoadOutputSettings(); });
  });
}

void frmMain::Show() {
  load();
  if (shown_) raise(runtime::invalidProcedureCall);
  struct Showing {
    frmMain& form;
    ~Showing() {
      form.shown_ = false;
      form.closingWindow_.reset();
    }
  };
  unhandled_.reset();
  shown_ = true;
  {
    const Showing showing{*this};
    window_->show();
  }
  // What left an event's procedure goes to whoever showed the dialog.
  if (unhandled_) throw Failure(*std::exchange(unhandled_, std::nullopt));
}

void frmMain::Hide() {
  load();
  window_->hide();
}

void frmMain::Unload() {
  if (!loaded_) return;
  const auto owner = classifier_;  // Unloading lets it go, and with it may go this dialog.
  bool cancel = false;
  Form_QueryUnload(cancel, platform::UnloadMode::ownCode);
  if (cancel) return;
  if (shown_) window_->hide();
  release();
}

void frmMain::Form_QueryUnload(bool& cancel, platform::UnloadMode mode) {
  traced(dialog::key::Form_QueryUnload, [&](Steps& step) {
    step([&] {
      if (mode == platform::UnloadMode::userRequest) tag_ = "CLOSE";
    });
  });
  (void)cancel;  // NB: closing is never refused.
}

void frmMain::Form_Unload() {
  traced(dialog::key::Form_Unload, [&](Steps& step) {
    step([&] { settings_.reset(); });
    step([&] { classifier_.reset(); });
  });
}

/// Unloads, also where a failure leaves Form_Unload. A window that is still in its `show` lives until that returns.
void frmMain::release() {
  struct Unloading {
    frmMain& form;
    ~Unloading() {
      form.loaded_ = false;
      if (form.shown_ && !form.closingWindow_) {
        form.closingWindow_ = std::move(form.window_);
      } else {
        form.window_.reset();
      }
    }
  };
  const Unloading unloading{*this};
  Form_Unload();
}

CAppSettings& frmMain::settings() {
  if (!settings_) raise(runtime::objectNotSet);
  return *settings_;
}

// --- Accessors ----------------------------------------------------------------------------------------------------

platform::OptionItem& frmMain::item(const std::string& key) {
  load();
  return suiOptions_.Item(key);
}

std::string frmMain::valueText(const std::string& key) {
  return toText(item(key).Value, globals::locale());
}

void frmMain::setValue(const std::string& key, Variant value) {
  item(key).Value = std::move(value);
  changed();
}

void frmMain::setChecked(const std::string& key, bool value) {
  item(key).Checked = value;
  changed();
}

void frmMain::changed() {
  if (window_) window_->itemsChanged();
}

const platform::OptionItems& frmMain::suiOptions() {
  load();
  return suiOptions_;
}

const platform::OptionItems& frmMain::suiButtons() {
  load();
  return suiButtons_;
}

float frmMain::measure(platform::WindowMeasure which) {
  load();
  return window_->measure(which);
}

void frmMain::setMeasure(platform::WindowMeasure which, float twips) {
  load();
  window_->setMeasure(which, twips);
}

void frmMain::Classifier(std::shared_ptr<void> value) {
  classifier_ = std::move(value);
}

void frmMain::Inputs(const std::string& value) {
  setValue("INPUTS", value);
}
std::string frmMain::Inputs() {
  return valueText("INPUTS");
}
void frmMain::Outputs(const std::string& value) {
  setValue("OUTPUTS", value);
}
std::string frmMain::Outputs() {
  return valueText("OUTPUTS");
}
void frmMain::Clusters(const std::string& value) {
  setValue("CLUSTERS", value);
}
std::string frmMain::Clusters() {
  return valueText("CLUSTERS");
}
void frmMain::LearningRate(const std::string& value) {
  setValue("LEARNINGRATE", value);
}
std::string frmMain::LearningRate() {
  return valueText("LEARNINGRATE");
}
void frmMain::Epochs(const std::string& value) {
  setValue("EPOCHS", value);
}
std::string frmMain::Epochs() {
  return valueText("EPOCHS");
}
void frmMain::InitialWeights(const std::string& value) {
  setValue("INITIALWEIGHTS", value);
}
std::string frmMain::InitialWeights() {
  return valueText("INITIALWEIGHTS");
}
void frmMain::StartLearningRadius(const std::string& value) {
  setValue("STARTLEARNINGRADIUS", value);
}
std::string frmMain::StartLearningRadius() {
  return valueText("STARTLEARNINGRADIUS");
}

void frmMain::ActivationFunction(enuActivationFunction value) {
  item("ACTIVATIONFUNCTION").SelectedCode = static_cast<std::int32_t>(value);
  SyncActivationCaption();
  changed();
}

enuActivationFunction frmMain::ActivationFunction() {
  // NB: a stored code outside 1 to 4 is given as it is.
  return static_cast<enuActivationFunction>(toInt32(item("ACTIVATIONFUNCTION").SelectedCode, globals::locale()));
}

void frmMain::UseConvex(bool value) {
  setChecked("USECONVEX", value);
}
bool frmMain::UseConvex() {
  return item("USECONVEX").Checked;
}
void frmMain::ScaleValues(bool value) {
  setChecked("SCALEVALUES", value);
}
bool frmMain::ScaleValues() {
  return item("SCALEVALUES").Checked;
}

bool frmMain::SplitToOneColumn() {
  return getOutputOption() == 1;
}
bool frmMain::DrawCharts() {
  return item("DRAWCHARTS").Checked;
}
bool frmMain::CalculateAverages() {
  return item("AVERAGES").Checked;
}
bool frmMain::CalculateWeightedAverages() {
  return item("WEIGHTEDAVERAGES").Checked;
}
bool frmMain::CalculateMinimums() {
  return item("MINIMUMS").Checked;
}
bool frmMain::CalculateMaximums() {
  return item("MAXIMUMS").Checked;
}
bool frmMain::CalculateClusterWeight() {
  return item("CLUSTERWEIGHTS").Checked;
}
bool frmMain::SetColors() {
  return item("SETCOLORS").Checked;
}
bool frmMain::SetAutofilter() {
  return item("AUTOFILTER").Checked;
}
bool frmMain::SortByClusters() {
  return item("SORTCLUSTERS").Checked;
}
std::int32_t frmMain::getOutputOption() {
  return item("SPLITMULTIPLE").Checked ? 0 : 1;
}

}  // namespace mervane
