#include "cli/json_text.h"

#include <nlohmann/json.hpp>

#include "cli/report.h"

namespace mervane::cli {
namespace {

using Json = nlohmann::ordered_json;

template <class T>
Json orNull(const std::optional<T>& value) {
  return value ? Json(*value) : Json(nullptr);
}

}  // namespace

std::string jsonString(std::string_view text) {
  return Json(text).dump();
}

std::string reportJson(const Report& report) {
  Json json;
  json["rows"] = report.rows;
  json["columns"] = report.columns;
  json["clusters"] = report.sizes.size();
  json["sizes"] = report.sizes;
  json["empty_clusters"] = report.emptyClusters;
  json["rows_without_cluster"] = report.rowsWithoutCluster;
  json["epochs"] = report.epochs;
  json["epochs_done"] = report.epochsDone;
  json["scaled"] = report.scaled;
  json["quantisation_error"] = orNull(report.quantisationError);
  json["topographic_error"] = orNull(report.topographicError);
  json["within_sum_of_squares"] = report.within;
  json["between_sum_of_squares"] = report.between;
  json["total_sum_of_squares"] = report.total;
  json["silhouette"] = orNull(report.silhouette.mean);
  json["silhouette_rows"] = report.silhouette.samplesUsed;
  return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace mervane::cli
