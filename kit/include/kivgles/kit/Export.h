#ifndef KIVGLES_KIT_EXPORT_H
#define KIVGLES_KIT_EXPORT_H

/// @file
/// What the kit's library shows of itself.

/// A class or function that clients use.
#define KIVGLES_KIT_EXPORT __attribute__((visibility("default")))

#endif  // KIVGLES_KIT_EXPORT_H
