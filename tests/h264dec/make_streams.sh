#!/bin/sh
# Makes the H.264 decoder's test streams with Debian's x264 and ffmpeg: synthetic sources, one stream per
# feature, each with ffmpeg's per-frame MD5s beside it.
#   make_streams.sh OUTDIR            write NAME.264 and NAME.md5 for every stream
#   make_streams.sh --check DIR       regenerate into a scratch directory and say whether anything changed
set -eu
check=
if [ "${1:-}" = "--check" ]; then check=$2; out=$(mktemp -d); else out=${1:?usage: make_streams.sh OUTDIR}; fi
mkdir -p "$out"
command -v x264 >/dev/null && command -v ffmpeg >/dev/null || { echo "make_streams.sh: x264 and ffmpeg are needed" >&2; exit 77; }

# NAME SIZE FRAMES SOURCE X264-OPTIONS...
stream() {
  name=$1 size=$2 frames=$3 src=$4; shift 4
  case $src in *,*) lavfi="${src%%,*}=size=$size:rate=25,${src#*,}" ;; *) lavfi="$src=size=$size:rate=25" ;; esac
  ffmpeg -v error -y -f lavfi -i "$lavfi" -frames:v "$frames" -pix_fmt yuv420p -f rawvideo "$out/$name.yuv"
  x264 --quiet --no-progress --threads 1 --input-res "$size" --fps 25 "$@" -o "$out/$name.264" "$out/$name.yuv" 2>/dev/null
  rm -f "$out/$name.yuv"
  ffmpeg -v error -threads 1 -i "$out/$name.264" -f framemd5 - | grep -v '^#' | awk -F', *' '{print $6}' > "$out/$name.md5"
}

B="--no-cabac"
stream intra_qcif        176x144 3  testsrc    $B --profile baseline --keyint 1 --qp 20
stream baseline_cif      352x288 8  testsrc    $B --profile baseline --qp 28
stream lossless_near     176x144 4  testsrc    $B --profile baseline --qp 1
stream qp51              176x144 4  mandelbrot $B --profile baseline --qp 51
stream odd_size          200x120 6  testsrc    $B --profile baseline --qp 26
stream odd_size2         94x62   5  mandelbrot $B --profile main --bframes 2 --qp 30
stream refs4             176x144 12 mandelbrot $B --profile main --ref 4 --bframes 0 --qp 24
stream slices            176x144 6  testsrc    $B --profile main --slices 4 --bframes 1 --qp 26
stream deblock_off       176x144 5  testsrc    $B --profile main --no-deblock --qp 30
stream deblock_offsets   176x144 5  testsrc    $B --profile main --deblock -3:2 --qp 34
stream deblock_strong    176x144 5  mandelbrot $B --profile main --deblock 4:4 --qp 38
stream bframes           176x144 10 mandelbrot $B --profile main --bframes 3 --b-pyramid none --qp 26
stream bpyramid          176x144 12 mandelbrot $B --profile main --bframes 3 --b-pyramid normal --ref 3 --qp 26
stream direct_temporal   176x144 10 mandelbrot $B --profile main --bframes 2 --direct temporal --qp 28
stream direct_spatial    176x144 10 mandelbrot $B --profile main --bframes 2 --direct spatial --qp 28
stream weightp_fade      176x144 12 testsrc,fade=in:0:12 $B --profile main --weightp 2 --bframes 0 --ref 3 --qp 26
stream weightb_fade      176x144 12 mandelbrot,fade=out:0:12 $B --profile main --weightp 1 --bframes 2 --weightb --qp 26
stream constrained_intra 176x144 8  mandelbrot $B --profile main --constrained-intra --bframes 1 --qp 28
stream pyramid_strict    176x144 12 mandelbrot $B --profile main --bframes 3 --b-pyramid strict --ref 2 --qp 28
stream weightb_implicit  176x144 10 mandelbrot $B --profile main --bframes 2 --weightb --qp 26
stream high_8x8          176x144 8  mandelbrot $B --profile high --8x8dct --bframes 2 --qp 24
stream high_intra8x8     176x144 3  testsrc    $B --profile high --8x8dct --keyint 1 --qp 22
stream cqm_jvt           176x144 8  mandelbrot $B --profile high --8x8dct --cqm jvt --bframes 2 --qp 26
stream cqm_flat_list    176x144 6  testsrc    $B --profile high --8x8dct --cqm flat --bframes 1 --qp 30 --chroma-qp-offset 3
stream aq_crf            176x144 10 mandelbrot $B --profile main --crf 22 --aq-mode 2 --aq-strength 1.5 --bframes 2 --weightb
stream aq_high_cqm       192x112 10 testsrc2   $B --profile high --8x8dct --crf 26 --aq-mode 1 --aq-strength 2 --cqm jvt --chroma-qp-offset -4 --bframes 1
stream high_everything   208x128 14 mandelbrot $B --profile high --8x8dct --bframes 3 --b-pyramid normal --ref 4 --weightp 2 --weightb --slices 3 --direct auto --qp 25

if [ -n "$check" ]; then
  changed=0
  for f in "$out"/*.264 "$out"/*.md5; do
    n=$(basename "$f")
    cmp -s "$f" "$check/$n" || { echo "changed: $n"; changed=1; }
  done
  rm -rf "$out"
  [ $changed = 0 ] && echo "make_streams.sh: nothing changed"
  exit $changed
fi
