#pragma once

#include <memory>
#include <string>

#include "platform/error_window.h"
#include "platform/option_item.h"

namespace mervane {

/// The modal dialog that shows a failure report, takes the answer and hands the report to the mail program. One form
/// object serves a thread to its end and is only loaded and unloaded again; its user is CErrorHandler.
///
/// Order of use: Load, ErrorMessage, SupportMail, Show, Tag, Unload. Every rule of the form skips a failing statement;
/// Load, Show and Unload raise what the window raises.
class frmErrorMessage final : private platform::ErrorWindowEvents {
 public:
  frmErrorMessage();
  ~frmErrorMessage();
  frmErrorMessage(const frmErrorMessage&) = delete;
  frmErrorMessage& operator=(const frmErrorMessage&) = delete;

  /// Address that the mail goes to; empty for none. It outlives the unloading.
  void SupportMail(const std::string& value) { supportMail_ = value; }
  /// Text of the report, empty after unloading. Both load the form where it is not loaded.
  [[nodiscard]] const std::string& ErrorMessage();
  void ErrorMessage(const std::string& value);

  /// Makes the window and its items anew; does nothing while the form is loaded.
  void Load();
  /// Shows modally; returns when the form is hidden or closed. Raises invalidProcedureCall while shown.
  void Show();
  void Unload();
  [[nodiscard]] bool IsLoaded() const noexcept { return loaded_; }
  /// Key of the pressed button; empty where the form was closed by its close box.
  [[nodiscard]] const std::string& Tag() const noexcept { return tag_; }

  [[nodiscard]] const platform::OptionItems& suiTitle() const noexcept { return suiTitle_; }
  [[nodiscard]] const platform::OptionItems& suiButtons() const noexcept { return suiButtons_; }

 private:
  void activated() override;
  void resized() override;
  void clicked(const std::string& key) override;
  void closed() override;
  void sendMail();

  bool loaded_ = false;
  bool shown_ = false;
  std::string supportMail_;
  std::string tag_;
  std::string txtErrorMessage_;
  platform::OptionItems suiTitle_;
  platform::OptionItems suiButtons_;
  std::unique_ptr<platform::ErrorWindow> window_;
  /// A window whose form has unloaded while the window is still in its `show`.
  std::unique_ptr<platform::ErrorWindow> closingWindow_;
};

}  // namespace mervane
