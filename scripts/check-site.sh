#!/usr/bin/env bash
# Opens a generated plain-HTML site in headless Chromium (Debian's chromium, driven by
# playwright-core from the npm registry): the frames page must load with its frames and no console
# errors or missing files. Saves a screenshot with a page of the site in the main frame.
#
#   scripts/check-site.sh SITE_FOLDER SCREENSHOT.png [PAGE_FOR_THE_SCREENSHOT]
set -euo pipefail
here="$(cd "$(dirname "$0")" && pwd)"

missing=()
command -v chromium >/dev/null || missing+=(chromium)
command -v npm >/dev/null || missing+=(nodejs npm)
if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
[ -d "$here/site-check/node_modules/playwright-core" ] ||
  npm ci --prefix "$here/site-check" --no-audit --no-fund --silent
node "$here/site-check/check-site.mjs" "$1" "$2" webframe.html "${3:-}"
