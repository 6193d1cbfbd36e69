#!/usr/bin/python3
"""A second, independent implementation of the amount rules, written in Python from the rules alone.

It generates thousands of amounts with a fixed seed, asks the probe program (first argument) for its answers and
reports every difference. Exit status 0 when all agree.
"""
import decimal
import random
import re
import subprocess
import sys
from decimal import Decimal, ROUND_HALF_UP

CTX = decimal.Context(prec=500, Emax=999999, Emin=-999999)


class Fault(Exception):
    def __init__(self, number):
        super().__init__(number)
        self.number = number


# --- number rules -----------------------------------------------------------------------------------------------

def to_double(dec):
    try:
        value = float(dec)
    except OverflowError:
        raise Fault(6)
    if value in (float("inf"), float("-inf")):
        raise Fault(6)
    return value


AMOUNT = re.compile(
    r"^[ \t\n\r\v\f]*(?P<lead>[+-]?)[ \t\n\r\v\f]*(?P<int>[0-9.]*?)(?:,(?P<frac>[0-9]*))?"
    r"(?:[eEdD](?P<exp>[+-]?[0-9]+))?[ \t\n\r\v\f]*(?P<trail>[+-]?)[ \t\n\r\v\f]*$")


def cdbl(text):
    """A typed amount in a German locale: points before the comma are thousands marks, anywhere."""
    m = AMOUNT.match(text)
    if not m:
        raise Fault(13)
    if m.group("lead") and m.group("trail"):
        raise Fault(13)
    digits = m.group("int").replace(".", "")
    frac = m.group("frac") or ""
    if not digits and not frac:
        raise Fault(13)
    dec = CTX.create_decimal(f"{digits or '0'}.{frac or '0'}E{int(m.group('exp') or 0)}")
    value = to_double(dec)
    if value == 0:
        return 0.0
    return -value if "-" in (m.group("lead") + m.group("trail")) else value


VAL = re.compile(r"([+-]?)([0-9]*)(?:\.([0-9]*))?")
VAL_EXP = re.compile(r"[eEdD]([+-]?[0-9]+)")


def val(text):
    """The leading-number scan: blanks, tabs and line feeds vanish, a point is the only decimal mark."""
    s = re.sub(r"[ \t\n]", "", text)
    m = VAL.match(s)
    sign, digits, frac = m.group(1), m.group(2), m.group(3) or ""
    if not digits and not frac:
        return 0.0
    exp = 0
    e = VAL_EXP.match(s, m.end())
    if e:
        exp = int(e.group(1))
    value = to_double(CTX.create_decimal(f"{digits or '0'}.{frac or '0'}E{exp}"))
    return -value if sign == "-" else value


def cstr(x):
    if x == 0:
        return "0"
    return ("%.15G" % x).replace(".", ",")


def str_point(x):
    text = "%.15G" % x
    if text.startswith("0."):
        text = text[1:]
    elif text.startswith("-0."):
        text = "-" + text[2:]
    return text if x < 0 else " " + text


def fmt2(x):
    """Pattern "0.00": round half away from zero on the 15-significant-digit form."""
    if x in (float("inf"), float("-inf")):
        raise Fault(6)
    dec = CTX.create_decimal("%.14e" % abs(x)).quantize(Decimal("0.01"), rounding=ROUND_HALF_UP, context=CTX)
    text = format(dec, "f").replace(".", ",")
    return "-" + text if x < 0 else text


def fmt2_text(text):
    try:
        return fmt2(cdbl(text))
    except Fault:
        return text


def clng(x):
    r = round(x)  # Python rounds exact halves to the even neighbour
    if r < -2**31 or r > 2**31 - 1:
        raise Fault(6)
    return r


def div(a, b):
    if b == 0:
        raise Fault(6 if a == 0 else 11)
    return check(a / b)


def check(x):
    if x in (float("inf"), float("-inf")) or x != x:
        raise Fault(6)
    return x


# --- words ------------------------------------------------------------------------------------------------------

DIGIT = ["", "ein", "zwei", "drei", "vier", "fünf", "sechs", "sieben", "acht", "neun"]
UNIT = ["", "eins", "zwei", "drei", "vier", "fünf", "sechs", "sieben", "acht", "neun"]
TEEN = ["zehn", "elf", "zwölf", "dreizehn", "vierzehn", "fünfzehn", "sechzehn", "siebzehn", "achtzehn", "neunzehn"]
TENS = {20: "zwanzig", 30: "dreißig", 40: "vierzig", 50: "fünfzig", 60: "sechzig", 70: "siebzig", 80: "achtzig",
        90: "neunzig"}


def digit_words(d):
    return DIGIT[d] if 1 <= d <= 9 else ""


def pair_words(v):
    if v < 20:
        return "" if v == 0 else (UNIT[v] if v < 10 else TEEN[v - 10])
    w = digit_words(int(str(v)[-1]))
    if w:
        w += "und"
    return w + TENS.get(int(str(v)[0]) * 10, "")


def group_words(part, one, many):
    q = pair_words(int(part[-2:]))
    q = one if q == "eins" else q + many
    if int(part) > 99:
        q = digit_words(int(part[0])) + "hundert" + q
    return q


def get_zahl(n):
    s = str(n)
    if n > 999999999:
        return "<Zahl ist zu groß>"
    if n >= 1000001:
        return (group_words(s[:-6], "einemillion", "millionen") + group_words(s[-6:-3], "eintausend", "tausend")
                + group_words(s[-3:], "eins", ""))
    if n >= 1000:
        return group_words(s[:-3], "eintausend", "tausend") + group_words(s[-3:], "eins", "")
    if n >= 1:
        return group_words(s, "eins", "")
    return ""


def char_value(c):
    return int(c) if c.isdigit() and c.isascii() else 0


def triplet_words(g):
    a = u = b = ""
    if char_value(g[0]) > 0:
        a = "einhundert" if g[0] == "1" else UNIT[char_value(g[0])] + "hundert"
    r = val(g[1:3])
    if 10 <= r < 20:
        u = TEEN[int(r) - 10]
    else:
        if char_value(g[1]) > 1:
            b = TENS[char_value(g[1]) * 10]
        if char_value(g[2]) > 0:
            if b:
                u = "einund" if g[2] == "1" else UNIT[char_value(g[2])] + "und"
            else:
                u = UNIT[char_value(g[2])]
    return a + u + b


def betrag(x):
    if x == 0:
        return "null"
    s = str_point(x).lstrip(" ")
    if len(s) > 12:
        raise Fault(5)
    s = s.rjust(12, "0")
    groups = [s[0:3], s[3:6], s[6:9], s[9:12]]
    out = ""
    for g, one, many in zip(groups[:3], ["einemilliarde", "einemillion", "eintausend"],
                            ["milliarden", "millionen", "tausend"]):
        if g == "000":
            continue
        out += one if g == "001" else triplet_words(g) + many
    if groups[3] != "000":
        out += triplet_words(groups[3])
    return out


# --- the form ---------------------------------------------------------------------------------------------------

TOO_LARGE = "+++ Der von Ihnen eingegebene Wert kann nicht umgewandelt werden, da er zu groß ist! +++"


class Form:
    def __init__(self, check):
        self.f = {"Text10": "0,00", "Text11": "0,00", "Text12": "0,00", "Text3": "19", "Text4": ""}
        self.check = check

    def set(self, name, value):
        if self.f[name] == value:
            return
        self.f[name] = value
        if name == "Text12":
            self.changed()

    def changed(self):
        if self.f["Text12"] == "":
            return
        try:
            self.gross_steps(reformat=False)
        except Fault:
            pass
        try:
            self.words_by_check()
        except Fault:
            pass

    def gross_steps(self, reformat):
        factor = check(1 + div(cdbl(self.f["Text3"]), 100))
        net = div(cdbl(self.f["Text12"]), factor)
        self.set("Text10", fmt2(net))
        self.set("Text11", fmt2_text(self.f["Text11"]))
        share = check(cdbl(self.f["Text12"]) - cdbl(self.f["Text10"]))
        self.set("Text11", cstr(share))
        self.set("Text11", fmt2_text(self.f["Text11"]))
        if reformat:
            self.set("Text12", fmt2_text(self.f["Text12"]))

    def net_steps(self):
        vat = div(check(cdbl(self.f["Text3"]) * cdbl(self.f["Text10"])), 100)
        self.set("Text11", fmt2(vat))
        gross = check(cdbl(self.f["Text10"]) + cdbl(self.f["Text11"]))
        self.set("Text12", fmt2(gross))
        self.set("Text10", fmt2_text(self.f["Text10"]))

    def words_rounding(self):
        if cdbl(self.f["Text12"]) < 2147483647:
            self.set("Text4", get_zahl(clng(cdbl(self.f["Text12"]))))
        else:
            self.set("Text4", TOO_LARGE)

    def words_truncation(self):
        self.set("Text4", betrag(val(self.f["Text12"])))

    def words_by_check(self):
        if self.check == 1:
            self.words_rounding()
        else:
            self.words_truncation()

    def answer(self):
        return "\t".join(self.f[k] for k in ("Text10", "Text11", "Text12", "Text4"))


def entry(field, text, rate, check_value):
    """RETURN in the gross (Text12) or the net (Text10); the net always takes the truncated words."""
    form = Form(check_value)
    form.set("Text3", rate)
    form.set(field, text)
    if text == "":
        return form.answer()
    try:
        if field == "Text12":
            form.gross_steps(reformat=True)
            form.words_by_check()
        else:
            form.net_steps()
            form.words_truncation()
    except Fault:
        return "MSG"
    return form.answer()


def words(text12, rounding):
    form = Form(1 if rounding else 0)
    form.set("Text12", text12)
    form.words_by_check()
    return form.f["Text4"]


# --- generated cases --------------------------------------------------------------------------------------------

def random_amount(rng):
    kind = rng.random()
    whole = rng.choice([rng.randint(0, 9), rng.randint(0, 999), rng.randint(0, 99999), rng.randint(0, 10**9),
                        rng.randint(0, 10**12), rng.randint(2**31 - 3, 2**31 + 3)])
    text = str(whole)
    if kind < 0.6:
        text += "," + str(rng.randint(0, 99)).zfill(rng.choice([1, 2]))
    elif kind < 0.7:
        text += "," + str(rng.randint(0, 999)).zfill(3)
    elif kind < 0.8:
        # thousands marks, in the right places or not
        digits = list(text)
        for _ in range(rng.randint(1, 3)):
            digits.insert(rng.randint(0, len(digits)), ".")
        text = "".join(digits) + rng.choice(["", ",5", ",05", ",50"])
    elif kind < 0.85:
        text += ",5"
    if rng.random() < 0.1:
        text = "-" + text
    elif rng.random() < 0.03:
        text = text + "-"
    if rng.random() < 0.03:
        text = " " + text + " "
    if rng.random() < 0.03:
        text = rng.choice(["", "-", ",", ".", "12,3,4", "1.2.3", "abc", "1e3", "2,5E2", "0", "0,00", ",5", "5,"])
    return text


def random_rate(rng):
    return rng.choice(["19", "19", "19", "7", "7", "16", "0", "19,5", "5,5", "", "-100", "abc", "100",
                       str(rng.randint(0, 30)), "%d,%d" % (rng.randint(0, 30), rng.randint(0, 9))])


def cases(rng):
    for _ in range(5000):
        amount, rate, check_value = random_amount(rng), random_rate(rng), rng.randint(0, 1)
        yield ["gross", amount, rate, str(check_value)], lambda a=amount, r=rate, c=check_value: entry("Text12", a, r, c)
    for _ in range(2500):
        amount, rate = random_amount(rng), random_rate(rng)
        yield ["net", amount, rate], lambda a=amount, r=rate: entry("Text10", a, r, 0)
    for _ in range(2000):
        amount = random_amount(rng)
        yield ["words-r", amount], lambda a=amount: words(a, True)
        yield ["words-t", amount], lambda a=amount: words(a, False)
    for n in list(range(-3, 1200)) + [rng.randint(-10, 2**31 - 1) for _ in range(3000)] + \
            [rng.randint(0, 10**9 + 10) for _ in range(3000)]:
        yield ["zahl", str(n)], lambda n=n: get_zahl(n)
    for _ in range(4000):
        x = rng.choice([float(rng.randint(0, 10**12)), float(rng.randint(-10**11, 0)), rng.uniform(-1e6, 1e6),
                        float(rng.randint(0, 2000)), rng.uniform(0, 1), float(10**rng.randint(0, 14))])
        yield ["betrag", repr(x)], lambda x=x: betrag(x)
    for _ in range(3000):
        x = rng.choice([rng.randint(-10**6, 10**6) / 1000, rng.uniform(-1e9, 1e9), rng.uniform(-1, 1) * 1e-3,
                        rng.randint(0, 10**15) / 100, rng.uniform(1e14, 1e20)])
        yield ["fmt", repr(x)], lambda x=x: fmt2(x)
        yield ["cstr", repr(x)], lambda x=x: cstr(x)
        yield ["str", repr(x)], lambda x=x: str_point(x)
        half = rng.randint(-10**6, 10**6) + rng.choice([0.5, 0.25, 0.75, 0.0])
        yield ["clng", repr(half)], lambda h=half: str(clng(h))
    for _ in range(3000):
        text = "".join(rng.choice("0123456789,.- eE+") for _ in range(rng.randint(0, 9)))
        yield ["parse", text], lambda t=text: "%.17g" % cdbl(t)
        yield ["val", text], lambda t=text: "%.17g" % val(t)
    for _ in range(2000):
        group = "".join(rng.choice("0123456789-.") for _ in range(3))
        yield ["triplet", group], lambda g=group: triplet_words(g)


def main():
    probe = sys.argv[1]
    rng = random.Random(4711)
    requests, expected = [], []
    for request, oracle in cases(rng):
        requests.append(request)
        try:
            expected.append(oracle())
        except Fault as fault:
            expected.append(f"ERR {fault.number}")
    text_in = "".join("\t".join(r) + "\n" for r in requests)
    result = subprocess.run([probe], input=text_in.encode("utf-8"), capture_output=True, check=True)
    answers = result.stdout.decode("utf-8").split("\n")[:-1]
    if len(answers) != len(requests):
        print(f"probe gave {len(answers)} answers for {len(requests)} requests")
        return 1
    differences = 0
    for request, want, got in zip(requests, expected, answers):
        if want != got:
            differences += 1
            if differences <= 30:
                print(f"{request!r}: oracle {want!r}, program {got!r}")
    print(f"{len(requests)} cases, {differences} differences")
    return 0 if differences == 0 else 1


if __name__ == "__main__":
    sys.exit(main())
