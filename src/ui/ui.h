#pragma once

// The ui layer: widgets and window controllers of the settings bundle, over the core layer.
