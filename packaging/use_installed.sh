#!/bin/sh
# Uses the installed packages as their users would, in this folder.
set -eux
cd "$(dirname "$0")"

# The command, by the figures that docs/reference-engine.md works out.
shipment=sample/shipments/01-deficit-and-discount.json
cwt --version
cwt sample sample
cwt rate $shipment >bill.text
cat bill.text
grep -q '^  Net charge  *469\.75$' bill.text
cwt rate $shipment --json >bill.json

# The library, by a C host that its page shows with what it prints.
# shellcheck disable=SC2046
gcc host.c $(pkg-config --cflags --libs hundredweight) -o host
./host sample/ >printed.text
diff printed.text host.text

# Python and the service, by the command's bill.
python3 use_installed.py $shipment bill.text bill.json

# The pages that the descriptions promise.
test -s /usr/share/man/man1/cwt-rate.1.gz
test -s /usr/share/man/man3/RateShipment.3hwt.gz
test -s /usr/share/man/man5/hundredweight-tariff.5.gz
test -s /usr/share/bash-completion/completions/cwt
test -s /usr/share/zsh/vendor-completions/_cwt
test -s /usr/share/fish/vendor_completions.d/cwt.fish
test -s /usr/share/doc/hundredweight/schema/shipment.json
test -s /usr/share/hundredweight/record.json
grep -q '^ExecStart=/usr/bin/cwt serve' /lib/systemd/system/cwt-serve.service
