"""Makes the operator lists of the status-bar plugin from public databases, and prints its decisions.

usage: operator_lists.py PROVIDERS COUNTRIES FOLDER

PROVIDERS is serviceproviders.xml of mobile-broadband-provider-info, COUNTRIES is iso_3166-1.json of iso-codes. Writes
OperatorList.xml, CPLMNOpList.xml and CMCCMNCOpList.xml into FOLDER and replaces the operators' names in its language
files. Needs ICU's uconv.
"""

import collections
import json
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree
from xml.sax.saxutils import escape, quoteattr

# Operators listed under the wrong country in the database: (country there, MCC) to the right country.
MISPLACED = {("ug", "250"): "ua"}

# Operators that the database names in their own script only: that name to the name in Latin letters.
LATIN_NAMES = {"همراه اول": "Hamrah-e Aval", "ایرانسل": "Irancell", "楽天モバイル": "Rakuten Mobile"}

LANGUAGE = "{http://www.w3.org/XML/1998/namespace}lang"
NAMES_BEGIN, NAMES_END = "<!-- Operators, made by scripts/update-operators -->", "<!-- End of the operators -->"

Provider = collections.namedtuple("Provider", "name translations country primary")


def read_countries(path, database):
    """Upper-case country code to the country's usual English name; the database's own for codes beyond ISO 3166."""
    entries = json.loads(path.read_text(encoding="utf-8"))["3166-1"]
    names = {entry["alpha_2"]: entry.get("common_name", entry["name"]) for entry in entries}
    return {country.get("code").upper(): country.findtext("name") for country in database.iter("country")} | names


def short_name(name):
    """The name without a remark in parentheses at its end, for which a status bar has no room."""
    return re.sub(r"\s*\([^()]*\)$", "", name) or name


def read_provider(element, country):
    names = {name.get(LANGUAGE, ""): " ".join((name.text or "").split()) for name in element.findall("name")}
    name = names.pop("", "")
    if name in LATIN_NAMES:
        name = f"{LATIN_NAMES[name]} ({name})"
    elif re.search("[^\0-\u024f\u2000-\u206f]", short_name(name)):
        print(f"not in Latin letters: '{name}' in {country}")
    return Provider(name, names, country, element.get("primary") == "true")


def read_networks(database):
    """(MCC, MNC) to its providers in file order."""
    networks = collections.defaultdict(list)
    for country in database.iter("country"):
        code = country.get("code")
        for element in country.iter("provider"):
            provider = read_provider(element, code.upper())
            for network in element.iterfind("gsm/network-id"):
                mcc, mnc = network.get("mcc", ""), network.get("mnc", "")
                if not (re.fullmatch(r"\d{3}", mcc) and re.fullmatch(r"\d{2,3}", mnc) and provider.name):
                    print(f"left out: network {mcc}-{mnc} of '{provider.name}' in {code}: no valid code or no name")
                    continue
                home = MISPLACED.get((code, mcc), code).upper()
                if home != provider.country:
                    print(f"moved: {mcc}-{mnc} '{provider.name}' from {provider.country} to {home}")
                networks[mcc, mnc].append(provider._replace(country=home))
    return dict(sorted(networks.items()))


def choose_provider(code, providers):
    """The primary provider, else the first in file order."""
    chosen = next((provider for provider in providers if provider.primary), providers[0])
    others = list(dict.fromkeys(f"{p.name} ({p.country})" for p in providers if p != chosen))
    if others:
        why = "primary" if chosen.primary else "first"
        print(f"network {'-'.join(code)}: {chosen.name} ({chosen.country}), the {why}; not {', '.join(others)}")
    return chosen


def choose_country(mcc, owners):
    """The country that has most networks of a country code, else the first one."""
    (chosen, _), *others = owners.most_common()
    if others:
        counts = ", ".join(f"{country} with {count}" for country, count in others)
        print(f"country {mcc}: {chosen} with {owners[chosen]} networks; not {counts}")
    return chosen


def choose_countries(networks):
    owners = collections.defaultdict(collections.Counter)
    for (mcc, _), provider in networks.items():
        owners[mcc][provider.country] += 1
    return {mcc: choose_country(mcc, counter) for mcc, counter in owners.items()}


def report_lengths(networks):
    """Reports countries in which the prefix of an IMSI is ambiguous: network codes have two and three digits."""
    for mcc in sorted({mcc for mcc, _ in networks}):
        codes = [mnc for m, mnc in networks if m == mcc]
        if len({len(mnc) for mnc in codes}) > 1:
            hidden = [long for long in codes for short in codes if long != short and long.startswith(short)]
            print(f"country {mcc}: network codes of 2 and of 3 digits; that begin alike: {', '.join(hidden) or 'none'}")


def language_id(code, provider):
    return f"IDS_OPERATOR_{''.join(code)}" if provider.translations else ""


def element(name, **attributes):
    return f"<{name}{''.join(f' {key}={quoteattr(value)}' for key, value in attributes.items() if value)}/>\n"


def operator_list(networks, countries, names):
    """The text of OperatorList.xml: networks by region, then countries."""
    regions = collections.defaultdict(list)
    for code, provider in networks.items():
        regions[names[provider.country]].append((code, provider))
    text = " <MccMnc>\n"
    for region, members in sorted(regions.items()):
        text += "  " + element("Region", descr=region)
        for (mcc, mnc), provider in members:
            text += "  " + element("Item", mcc=mcc, mnc=mnc, shortdescr=short_name(provider.name),
                                   fulldescr=provider.name, langid=language_id((mcc, mnc), provider))
    text += " </MccMnc>\n <MccOnly>\n"
    for mcc, country in countries.items():
        text += "  " + element("Item", mcc=mcc, shortdescr=country, fulldescr=names[country])
    return text + " </MccOnly>\n"


def name_list(networks, key):
    return "".join(" " + element("Item", **{key: "".join(code), "operator": short_name(provider.name)})
                   for code, provider in networks.items())


def write_list(path, root, content):
    head = '<?xml version="1.0" encoding="UTF-8"?>\n<!-- Made by scripts/update-operators. -->\n'
    path.write_text(f"{head}<{root}>\n{content}</{root}>\n", encoding="utf-8")


def simplified(text):
    """The text in simplified Chinese characters; the database has traditional ones."""
    conversion = ["uconv", "--from-code", "utf-8", "--to-code", "utf-8", "-x", "Traditional-Simplified"]
    return subprocess.run(conversion, input=text, capture_output=True, check=True, encoding="utf-8").stdout


def updated_language(path, networks):
    """The text of a language file with new names of operators, including untranslated ones."""
    code = path.stem.rpartition("_")[2]
    language = code.split("-")[0]
    items = "".join(
        f"  <item name={quoteattr(language_id(code, provider))}>"
        f"{escape(short_name(provider.translations.get(language, provider.name)))}</item>\n"
        for code, provider in networks.items() if provider.translations)
    if code == "zh-cn":
        items = simplified(items)
    before, _, rest = path.read_text(encoding="utf-8").partition(NAMES_BEGIN)
    after = rest.partition(NAMES_END)[2]
    if not after:
        sys.exit(f"{path.name} has no place for the operators: '{NAMES_BEGIN}' and '{NAMES_END}'")
    return f"{before}{NAMES_BEGIN}\n{items}  {NAMES_END}{after}"


def main(providers, countries, folder):
    database = ElementTree.parse(providers).getroot()
    names = read_countries(countries, database)
    networks = {code: choose_provider(code, found) for code, found in read_networks(database).items()}
    owners = choose_countries(networks)
    report_lengths(networks)

    languages = {path: updated_language(path, networks) for path in sorted(folder.glob("*.lang"))}  # ends on a fault
    write_list(folder / "OperatorList.xml", "OperatorList", operator_list(networks, owners, names))
    write_list(folder / "CPLMNOpList.xml", "CPLMN", name_list(networks, "IMSI"))
    write_list(folder / "CMCCMNCOpList.xml", "CMCCMNC", name_list(networks, "MCCMNC"))
    for path, text in languages.items():
        path.write_text(text, encoding="utf-8")
    translated = sum(bool(provider.translations) for provider in networks.values())
    print(f"{len(networks)} networks of {len({provider.country for provider in networks.values()})} countries, "
          f"{translated} of them with translated names; {len(owners)} country codes")


main(*map(pathlib.Path, sys.argv[1:]))
