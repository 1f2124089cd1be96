"""The library's error codes as Python exceptions."""

# One sentence per code, as the C header documents them.
ERROR_MESSAGES = {
    1: "invalid bond description, or the solver failed",
    21: "the Brady stripped-yield search did not converge",
    50: "a required array is missing",
    60: "a count is below its minimum",
    70: "a count is above its maximum",
    150: "a date is invalid or cannot be split",
    152: "month outside 1..12 in an index interpolation",
    153: "year outside the supported range in an index interpolation",
    160: "dates are misordered or outside their allowed range",
    170: "unknown holiday calendar code",
    250: "a rate is negative or invalid",
    300: "FRN day-count code not in 0..5",
    301: "FRN frequency not one of 1, 2, 3, 4, 6, 12, 26, 52",
    302: "FRN business-day rule not in 0..3",
    303: "FRN end-of-month flag not 0 or 1",
    304: "FRN holiday option not 0, 1 or 2",
    305: "FRN option flag not 0 or 1",
    306: "FRN year length negative",
    310: "scale or tick size zero, negative or not a number",
    350: "price zero, negative or not a number",
    360: "end-of-month flag not 0 or 1",
    400: "vanishing denominator in the discount margin",
    401: "vanishing pricing denominator",
    460: "value outside its allowed set, or unknown bond type",
    900: "unknown futures contract code",
    901: "FRN type handle not registered",
    910: "bond outside the contract's deliverable range",
    920: "notional coupon override out of range",
    -50: "memory not available",
    -60: "custom-type lock not obtained",
    -100: "temporary FRN type could not be looked up",
}


class KBondError(Exception):
    """Base class of every error this package raises."""

    def __init__(self, message, code=None):
        super().__init__(message)
        self.code = code


class KBondLibraryError(KBondError):
    """The library reported an error code; `.code` holds it."""

    def __init__(self, code, function=None):
        text = ERROR_MESSAGES.get(code, "unknown error")
        where = f"{function}: " if function else ""
        super().__init__(f"{where}{text} (error {code})", code)
        self.function = function


class KBondArgumentError(KBondError, ValueError):
    """An argument was refused before the library was called.

    `.code` is the code the library would give for the same input (1 for an
    invalid bond description, 460 for an unknown bond type name)."""


class KBondNotFoundError(KBondError, OSError):
    """The shared library could not be found or loaded."""


def message_for(code):
    """The sentence that describes library error `code`."""
    return ERROR_MESSAGES.get(code, "unknown error")
