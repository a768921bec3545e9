#pragma once

// Whether the person cancelled: SIGTERM, seen between two steps of the work.
namespace Cancellation {

void watch(); // from now on SIGTERM no longer ends the process by itself
bool asked();

} // namespace Cancellation
