#pragma once

/// Names of the dialog's traced procedures on the call stack.
namespace mervane::dialog::key {

inline constexpr const char* Form_Load = "MervaneClass3.frmMain.Form_Load";
inline constexpr const char* Form_QueryUnload = "MervaneClass3.frmMain.Form_QueryUnload";
inline constexpr const char* Form_Unload = "MervaneClass3.frmMain.Form_Unload";
inline constexpr const char* GetBooleanSetting = "MervaneClass3.frmMain.GetBooleanSetting";
inline constexpr const char* suiButtons_Click = "MervaneClass3.frmMain.suiButtons_Click";
inline constexpr const char* CloseForm = "MervaneClass3.frmMain.CloseForm";
inline constexpr const char* Classify = "MervaneClass3.frmMain.Classify";
inline constexpr const char* suiOptions_AfterDropDown = "MervaneClass3.frmMain.suiOptions_AfterDropDown";
inline constexpr const char* suiOptions_AfterEdit = "MervaneClass3.frmMain.suiOptions_AfterEdit";
inline constexpr const char* suiOptions_Browse = "MervaneClass3.frmMain.suiOptions_Browse";

}  // namespace mervane::dialog::key
