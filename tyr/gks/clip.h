#pragma once

/// Makes the device clip at the selected viewport.
void clip_apply();
