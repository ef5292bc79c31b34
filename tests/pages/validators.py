"""Two validators of pages: one of markup and style sheets, one of what hinders readers who do not see the page as
most do. Each finding is (kind, page, example): findings of one kind are alike but for names and numbers."""

import json
import re
import shutil
import subprocess
from pathlib import Path

import engines

# Rules of the guidelines for accessible pages, versions 2.0 to 2.2, levels A and AA.
RULES = ["wcag2a", "wcag2aa", "wcag21a", "wcag21aa", "wcag22aa"]


def missing(packages):
    """What must be installed before pages can be validated; empty if nothing."""
    return engines.Chromium.missing(packages) + [name for name, found in (
        ("default-jre-headless", shutil.which("java")),
        ("vnu-jar (tools/npm-setup)", _checker(packages).exists()),
        ("axe-core (tools/npm-setup)", _axe(packages).exists())) if not found]


def _checker(packages):
    return Path(packages, "node_modules/vnu-jar/build/dist/vnu.jar")


def _axe(packages):
    return Path(packages, "node_modules/axe-core/axe.min.js")


def markup_findings(packages, pages):
    """What is wrong with the markup and the style sheets of pages."""
    if not pages:
        return []
    checked = subprocess.run(
        ["java", "-Xss8m", "-jar", str(_checker(packages)), "--format", "json", "--errors-only", "--exit-zero-always",
         *map(str, pages)],
        capture_output=True, encoding="utf-8", check=False)
    try:
        messages = json.loads(checked.stderr)["messages"]
    except (json.JSONDecodeError, KeyError) as error:
        raise RuntimeError(f"the checker has failed: {checked.stderr[-2000:]}") from error
    return [(_kind(each["message"]), Path(each.get("url", "")).name,
             f'{each["message"]} line {each.get("lastLine", "?")}: {each.get("extract", "").strip()[:200]}')
            for each in messages]


def _kind(message):
    return re.sub(r"\d+", "0", re.sub(r"“[^”]*”", "“…”", message))


def access_findings(packages, engine, address, contrast=True):
    """What in a page hinders readers, by the rules; without `contrast`, pale colours do not."""
    engine.open(address)
    engine.script(_axe(packages).read_text(encoding="utf-8") + "; 0")
    options = {"resultTypes": ["violations"], "runOnly": {"type": "tag", "values": RULES},
               "rules": {"color-contrast": {"enabled": contrast}}}
    found = engine.script(f"""axe.run(document, {json.dumps(options)}).then(all => all.violations.map(each => ({{
        id: each.id, help: each.help, html: each.nodes.map(node => node.html),
        why: each.nodes[0].failureSummary}})))""")
    return [(f'{each["id"]}: {each["help"]}', Path(address).name,
             f'{len(each["html"])} times: {each["html"][0][:200]}: {" ".join(each["why"].split())}') for each in found]
