#pragma once

#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/uno/Exception.hpp>
#include <rtl/ustring.hxx>
#include <string>
#include <string_view>

#include "hosts/objects/refuse.h"

namespace mervane::calc {

namespace css = com::sun::star;
namespace uno = com::sun::star::uno;

[[nodiscard]] std::string fromOffice(const rtl::OUString& text);
/// Raises where the text is no UTF-8.
[[nodiscard]] rtl::OUString toOffice(std::string_view text);

using hosts::refuse;
/// The document or the office around it has gone.
[[noreturn]] void refuseClosed();
/// Raises a failure for what the office refused.
/// @param action what was asked of it, such as "write into Sheet1!B7"
[[noreturn]] void refuseFor(const std::string& action, const uno::Exception& exception);

/// Does something with the office and raises a Failure for every exception that it throws.
/// @param action what is asked, for people; it ends the sentence "LibreOffice could not ...". A text, or a function
///   that makes one when it is needed.
template <class Action, class Body>
auto inOffice(const Action& action, Body&& body) -> decltype(body()) {
  try {
    return body();
  } catch (const css::lang::DisposedException&) {
    refuseClosed();
  } catch (const uno::Exception& exception) {
    if constexpr (std::is_invocable_v<Action>) {
      refuseFor(action(), exception);
    } else {
      refuseFor(action, exception);
    }
  }
}

}  // namespace mervane::calc
