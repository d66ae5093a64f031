#pragma once

/// The names of the component's procedures on the call stack and as sources of its failures.
namespace mervane::component::key {

inline constexpr const char* Class_Initialize = "MervaneClass3.Classifier3.Class_Initialize";
inline constexpr const char* Run = "MervaneClass3.Classifier3.Run";
inline constexpr const char* CreateNetwork = "MervaneClass3.Classifier3.CreateNetwork";
inline constexpr const char* TrainNetwork = "MervaneClass3.Classifier3.TrainNetwork";
inline constexpr const char* StoreResults = "MervaneClass3.Classifier3.StoreResults";
inline constexpr const char* ShowMainForm = "MervaneClass3.Classifier3.ShowMainForm";
inline constexpr const char* Classify = "MervaneClass3.Classifier3.Classify";
inline constexpr const char* StoreResultsToExcel = "MervaneClass3.Classifier3.StoreResultsToExcel";

}  // namespace mervane::component::key
