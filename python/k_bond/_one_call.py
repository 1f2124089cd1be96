"""One-call functions made from object methods.

`k_bond.price(...)` is `Bond(...).price(...)` in one call; its signature
(what `inspect.signature` and editors show) is the method's own arguments
followed by the constructor's, all keyword-only, so the function and the
method can never drift apart."""

import inspect

_KW = inspect.Parameter.KEYWORD_ONLY


def from_method(cls, method_name, public_name, module, renamed=None, about=None):
    """The function `public_name` of `module` that builds `cls` from its
    keywords and calls `method_name` with the rest. `renamed` maps a
    constructor argument to the name the function shows (Bond's `type` is
    `bond_type`, which does not shadow the built-in); `about` names the
    description in the docstring when the class is private."""
    renamed = renamed or {}
    original = {shown: name for name, shown in renamed.items()}
    constructor = tuple(
        p.replace(name=renamed.get(p.name, p.name), kind=_KW)
        for p in inspect.signature(cls.__init__).parameters.values() if p.name != "self")
    constructor_names = frozenset(p.name for p in constructor)
    method = getattr(cls, method_name)
    method_signature = inspect.signature(method)
    own = tuple(p.replace(kind=_KW) for p in method_signature.parameters.values()
                if p.name != "self")
    signature = inspect.Signature(own + constructor,
                                  return_annotation=method_signature.return_annotation)

    def function(**arguments):
        bound = signature.bind(**arguments)  # TypeError for unknown or missing names
        described = {original.get(k, k): v for k, v in bound.arguments.items()
                     if k in constructor_names}
        call = {k: v for k, v in bound.arguments.items() if k not in constructor_names}
        return getattr(cls(**described), method_name)(**call)

    function.__name__ = function.__qualname__ = public_name
    function.__module__ = module
    function.__signature__ = signature
    shown = ", ".join(f"{new} for its `{old}`" for old, new in renamed.items())
    about = about or (f"{cls.__name__}'s{' (' + shown + ')' if shown else ''}; see "
                      f"help(k_bond.{cls.__name__})")
    function.__doc__ = inspect.getdoc(method) + f"\n\nThe description arguments are {about}."
    return function
