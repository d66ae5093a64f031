#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "mervane/enumerations.h"
#include "mervane/failure.h"
#include "mervane/variant.h"
#include "platform/option_item.h"
#include "platform/option_window.h"
#include "support/app_settings.h"

namespace mervane {

/// The options dialog. Its items are the only storage of the options; every accessor reads or writes one by its key.
///
/// The dialog loads at the first use of an item or of the window: it takes the defaults, reads the stored values over
/// them and mends what is out of bounds. Between showings it stays loaded and hidden with all items as they were; the
/// window's close box unloads it, and the next use loads it anew. A failure in an accessor passes to the caller.
class frmMain final : private platform::OptionWindowEvents {
 public:
  frmMain();
  ~frmMain();
  frmMain(const frmMain&) = delete;
  frmMain& operator=(const frmMain&) = delete;

  /// The owner; nothing in the dialog reads it. Unloading clears it. Neither of the two loads the dialog.
  void Classifier(std::shared_ptr<void> value);
  [[nodiscard]] std::shared_ptr<void> Classifier() const { return classifier_; }

  // Texts as the items hold them; nothing is converted or checked here.
  void Inputs(const std::string& value);
  [[nodiscard]] std::string Inputs();
  void Outputs(const std::string& value);
  [[nodiscard]] std::string Outputs();
  void Clusters(const std::string& value);
  [[nodiscard]] std::string Clusters();
  void LearningRate(const std::string& value);
  [[nodiscard]] std::string LearningRate();
  void Epochs(const std::string& value);
  [[nodiscard]] std::string Epochs();
  void InitialWeights(const std::string& value);
  [[nodiscard]] std::string InitialWeights();
  void StartLearningRadius(const std::string& value);
  [[nodiscard]] std::string StartLearningRadius();

  /// The code of the chosen function. Any number is taken and given back; a code that has no choice leaves the shown
  /// caption as it is. The getter raises typeMismatch or overflow for a code that is no 32-bit integer.
  void ActivationFunction(enuActivationFunction value);
  [[nodiscard]] enuActivationFunction ActivationFunction();

  void UseConvex(bool value);
  [[nodiscard]] bool UseConvex();
  void ScaleValues(bool value);
  [[nodiscard]] bool ScaleValues();

  [[nodiscard]] bool SplitToOneColumn();
  [[nodiscard]] bool DrawCharts();
  [[nodiscard]] bool CalculateAverages();
  [[nodiscard]] bool CalculateWeightedAverages();
  [[nodiscard]] bool CalculateMinimums();
  [[nodiscard]] bool CalculateMaximums();
  [[nodiscard]] bool CalculateClusterWeight();
  [[nodiscard]] bool SetColors();
  [[nodiscard]] bool SetAutofilter();
  [[nodiscard]] bool SortByClusters();
  /// 0 for "to multiple columns", otherwise 1, also where neither radio item is checked.
  [[nodiscard]] std::int32_t getOutputOption();

  /// How the last showing ended: "CLASSIFY", "CLOSE", "INPUTS" or "OUTPUTS". Outlives the unloading; does not load.
  [[nodiscard]] const std::string& Tag() const noexcept { return tag_; }

  /// Shows modally; returns when the dialog has hidden itself or was closed. Raises invalidProcedureCall while shown,
  /// and whatever the handling of a failure in the dialog has raised.
  void Show();
  void Hide();
  /// Closes the dialog from code, with the mode `ownCode`; does nothing while it is not loaded.
  void Unload();
  [[nodiscard]] bool IsLoaded() const noexcept { return loaded_; }

  /// The option list and the button bar. Both load the dialog.
  [[nodiscard]] const platform::OptionItems& suiOptions();
  [[nodiscard]] const platform::OptionItems& suiButtons();
  /// Place and size of the window in twips; both load the dialog.
  [[nodiscard]] float measure(platform::WindowMeasure which);
  void setMeasure(platform::WindowMeasure which, float twips);

 private:
  // The window's events.
  bool edited(const std::string& key, const std::string& text) override;
  void chosen(const std::string& key, const std::string& caption) override;
  void browsed(const std::string& key) override;
  void clicked(const std::string& key) override;
  void buttonClicked(const std::string& key) override;
  void resized() override;
  bool closeRequested(platform::UnloadMode mode) override;

  // Life.
  void load();
  void release();
  void Form_Load();
  void Form_QueryUnload(bool& cancel, platform::UnloadMode mode);
  void Form_Unload();

  // Memory.
  void LoadWindowSettings();
  void SaveWindowSettings();
  void LoadParameterValues();
  void SaveParameterValues();
  void LoadOutputSettings();
  void SaveOutputSettings();
  void SetDefaultValues();
  void ValidateLoadedValues();
  [[nodiscard]] bool GetBooleanSetting(const std::string& section, const std::string& key, bool defaultValue);
  void SaveBooleanSetting(const std::string& section, const std::string& key, bool value);
  void setOutputOption(std::int32_t value);

  // Editing.
  void suiOptions_AfterEdit(platform::OptionItem& item, bool& cancel);
  void suiOptions_AfterDropDown(const platform::OptionItem& item);
  void suiOptions_Browse(const platform::OptionItem& item);
  void suiOptions_Click(const platform::OptionItem& item);
  void suiButtons_Click(const platform::OptionItem& item);
  void SyncActivationValue();
  void SyncActivationCaption();
  void BrowseInputs();
  void BrowseOutputs();
  void Classify();
  void CloseForm();

  template <class Event>
  void handle(Event&& event);
  [[nodiscard]] CAppSettings& settings();
  platform::OptionItem& item(const std::string& key);
  [[nodiscard]] std::string valueText(const std::string& key);
  void setValue(const std::string& key, Variant value);
  void setChecked(const std::string& key, bool value);
  void changed();

  std::shared_ptr<void> classifier_;
  std::unique_ptr<CAppSettings> settings_;
  std::string tag_;
  bool loaded_ = false;
  bool shown_ = false;
  platform::OptionItems suiOptions_;
  platform::OptionItems suiButtons_;
  std::unique_ptr<platform::OptionWindow> window_;
  /// A window whose dialog has unloaded while the window is still in its `show`.
  std::unique_ptr<platform::OptionWindow> closingWindow_;
  /// A failure of the failure handling itself, kept until the showing has ended.
  std::optional<Failure> unhandled_;
};

}  // namespace mervane
