"""Pictures of a bond with matplotlib (an optional extra: pip install
k_bond[plot], or Debian's python3-matplotlib). Reached through
Bond.plot_price_yield and Bond.plot_cashflows."""

from .types import type_info


def _axes(ax):
    if ax is not None:
        return ax
    try:
        import matplotlib.pyplot as plt
    except ImportError:
        raise ImportError("k_bond's plots need matplotlib: pip install k_bond[plot] "
                          "(Debian: apt-get install python3-matplotlib)") from None
    return plt.subplots(figsize=(7, 4.5))[1]


def _coupon_rate(bond):
    coupon = bond.coupon
    return float(coupon if isinstance(coupon, (int, float)) else coupon[0])


def _frequency(bond):
    given = bond.description["frequency"]
    return given or type_info(bond.type).frequency or 2


def plot_price_yield(bond, settlement, *, yield_=None, yields=None, ax=None):
    """Clean price against yield, with the tangent whose slope is the
    modified duration times the dirty price at `yield_` (None: the coupon
    rate). `yields` (decimals) sets the curve's points (None: 3 percentage
    points either side). Returns the matplotlib Axes."""
    ax = _axes(ax)
    at = _coupon_rate(bond) if yield_ is None else float(yield_)
    if yields is None:
        yields = [at + (i - 30) * 0.001 for i in range(61)]
    yields = [y for y in yields if y > -0.5]
    prices = [bond.price(y, settlement) for y in yields]
    price = bond.price(at, settlement)
    dirty = price + bond.accrued(settlement)
    slope = -bond.duration(at, settlement) * dirty  # dP/dy, per 100 per unit of yield
    tangent = [price + slope * (y - at) for y in yields]
    percent = [100 * y for y in yields]
    ax.plot(percent, prices, color="tab:blue", linewidth=2, label="clean price")
    ax.plot(percent, tangent, color="tab:orange", linestyle="--",
            label=f"duration tangent at {100 * at:.2f} %")
    ax.plot([100 * at], [price], "o", color="tab:red")
    ax.set_xlabel("yield (%)")
    ax.set_ylabel("clean price per 100")
    ax.set_title(f"Price and yield, settlement {settlement}")
    ax.grid(True, alpha=0.3)
    ax.legend()
    return ax


def plot_cashflows(bond, settlement, *, yield_=None, ax=None):
    """The remaining coupons and principal as stacked bars on their payment
    dates, with each payment discounted to settlement at `yield_` (None: the
    coupon rate) per coupon period overlaid as points. Returns the Axes."""
    ax = _axes(ax)
    flows = bond.cashflows(settlement)
    at = _coupon_rate(bond) if yield_ is None else float(yield_)
    per_period = 1 + at / _frequency(bond)
    dates = [f.date for f in flows]
    coupons = [f.coupon for f in flows]
    principal = [f.principal for f in flows]
    present = [(f.coupon + f.principal) / per_period ** f.periods for f in flows]
    width = max(5.0, 0.4 * 365 / _frequency(bond))
    ax.bar(dates, coupons, width=width, color="tab:blue", label="coupon")
    ax.bar(dates, principal, width=width, bottom=coupons, color="tab:green", label="principal")
    ax.plot(dates, present, "o", color="tab:red", markersize=4,
            label=f"discounted at {100 * at:.2f} %")
    ax.set_yscale("symlog", linthresh=10)
    ax.set_xlabel("payment date")
    ax.set_ylabel("per 100 of face")
    ax.set_title(f"Cash flows after {settlement}")
    ax.legend()
    return ax
