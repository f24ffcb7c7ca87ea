#ifndef TREE800_EXPORT_H
#define TREE800_EXPORT_H

/// Marks what the shared library exports. Everything else is built with hidden visibility.
#define TREE800_EXPORT __attribute__((visibility("default")))

#endif
