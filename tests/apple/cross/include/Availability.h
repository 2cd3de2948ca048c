#pragma once

// Empty: nothing of it is used. Its name is enough for headers that include it on macOS.
