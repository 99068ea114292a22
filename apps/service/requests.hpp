#pragma once
/// \file
/// What the service answers.

#include "webserver.hpp"

namespace service {

/// GET /status: facts of the process, one on each line. GET /words/TEXT: the identifier under which TEXT is known as a word of
/// any installed language. POST /stop: ends the service. Anything else is 404, and what is no request 400.
Response answer(std::optional<Request> const & request);

} // namespace service
