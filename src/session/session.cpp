#include "session/session.h"

#include "messages/alert.h"
#include "session/methods.h"

namespace kelo::session {

void Session::receive(std::string_view message, const Reply& reply) {
  Json id = nullptr;
  try {
    const Request request = readRequest(message, &id);
    const Method* method = findMethod(request.method);
    if (method == nullptr) throw Refusal{kUnknownMethod, "There is no method \"" + request.method + "\""};
    checkParameters(*method, request.params);
    const Answer later = [reply, id](const Json& result) { reply(resultText(id, result)); };
    const std::optional<Json> result = method->handler({panels_, request.params, later});
    if (result) reply(resultText(id, *result));
  } catch (const Refusal& refusal) {
    reply(errorText(id, refusal));
  } catch (const Alert& raised) {
    reply(errorText(id, alert(raised.title, raised.text)));
  } catch (const std::bad_alloc&) {
    reply(errorText(id, alert("Not enough memory")));
  }
}

}  // namespace kelo::session
