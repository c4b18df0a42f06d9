#!/bin/sh
# Writes the twelve frames of the load animation, load-1.svg .. load-12.svg:
# a chip taking in data (an arrow falling into it) inside a ring of twelve
# dots, of which frame N lights dot N with a fading tail behind it. Run it
# from this folder after changing the drawing; the frames are committed.
set -eu
cd "$(dirname "$0")"
for n in 1 2 3 4 5 6 7 8 9 10 11 12; do
    awk -v n="$n" 'BEGIN {
        pi = atan2(0, -1)
        print "<?xml version=\"1.0\" encoding=\"UTF-8\"?>"
        print "<!-- Load animation, frame " n " of 12. Written by make_load_frames.sh. -->"
        print "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"64\" height=\"64\" viewBox=\"0 0 64 64\">"
        # The ring: the lit dot, two fading behind it, the rest at rest.
        for (i = 1; i <= 12; i++) {
            a = (i - 1) * 30 - 90
            x = 32 + 26 * cos(a * pi / 180)
            y = 32 + 26 * sin(a * pi / 180)
            back = (n - i + 12) % 12
            if (back == 0) { fill = "#1f6fb2"; r = 4.4; op = 1 }
            else if (back == 1) { fill = "#1f6fb2"; r = 3.6; op = 0.6 }
            else if (back == 2) { fill = "#1f6fb2"; r = 3.2; op = 0.3 }
            else { fill = "#c5ced8"; r = 2.8; op = 1 }
            printf "  <circle cx=\"%.2f\" cy=\"%.2f\" r=\"%.1f\" fill=\"%s\" opacity=\"%.1f\"/>\n", x, y, r, fill, op
        }
        # The chip with its pins.
        print "  <g fill=\"#8d99a6\">"
        for (k = 0; k < 4; k++) {
            p = 24.5 + k * 4.5
            printf "    <rect x=\"%.1f\" y=\"17\" width=\"2\" height=\"4\"/><rect x=\"%.1f\" y=\"43\" width=\"2\" height=\"4\"/>\n", p, p
            printf "    <rect x=\"17\" y=\"%.1f\" width=\"4\" height=\"2\"/><rect x=\"43\" y=\"%.1f\" width=\"4\" height=\"2\"/>\n", p, p
        }
        print "  </g>"
        print "  <rect x=\"20\" y=\"20\" width=\"24\" height=\"24\" rx=\"3\" fill=\"#2c3642\"/>"
        print "  <rect x=\"22\" y=\"22\" width=\"20\" height=\"20\" rx=\"2\" fill=\"#3a4654\"/>"
        # The arrow falls a little further each frame of four.
        d = ((n - 1) % 4) * 1.5
        printf "  <path d=\"M29.5,%.1f L34.5,%.1f L34.5,%.1f L38,%.1f L32,%.1f L26,%.1f L29.5,%.1f Z\" fill=\"#7cc4ff\"/>\n", \
               23 + d, 23 + d, 30 + d, 30 + d, 36.5 + d, 30 + d, 30 + d
        print "  <rect x=\"25\" y=\"39.5\" width=\"14\" height=\"1.6\" rx=\"0.8\" fill=\"#7cc4ff\"/>"
        print "</svg>"
    }' > "load-$n.svg"
done
