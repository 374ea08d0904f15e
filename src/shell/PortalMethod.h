#pragma once

#include <QString>
#include <functional>

#include "portal/GetHtml.h"

namespace qinghe {

/// What an answer without a table means to the caller.
enum class EmptyAnswer { IsNoRows, IsFailure };

/// The form that every portal method of a screen follows: hourglass, request by submit mode, cut
/// out the table, `eachRow` for each row (it reads at least one cell), hourglass off. False on any
/// failure, without a word; rows already taken stay. `eachRow` returns false to end with false.
bool readPortal(const QString& url, EmptyAnswer empty,
                const std::function<bool(GetHtml&)>& eachRow);

/// Fetches a page in a way of its own.
using PageFetch = std::function<QString(GetHtml&)>;

/// The same for the few that do not go by submit mode.
bool readPortal(const PageFetch& fetch, EmptyAnswer empty,
                const std::function<bool(GetHtml&)>& eachRow);

/// Posts a long text, fire and forget; false only when the post could not be started.
bool postToPortal(const QString& url, const QString& body);

}  // namespace qinghe
