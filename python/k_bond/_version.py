"""The package version; it follows the library's (CMake project VERSION)."""

__version__ = "2002.0"
