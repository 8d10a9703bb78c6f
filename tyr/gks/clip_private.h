#pragma once

namespace tyr {

/// Makes the device clip at the selected viewport.
void clip_apply();

} // namespace tyr
