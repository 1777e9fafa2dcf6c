# What the recipes share. A recipe names what its two clips have in common as plain variables, and
# what sets one of them apart before the call:
#
#     frames=100
#     clip clean
#     luma=$(black 50 50) clip faulty
#
# Codecs are lossless, so that a repeated frame repeats to the bit.
set -euo pipefail
out=$1

# Bars of 32 columns that move by 4 columns with each step of the phase: from step to step, luma
# differs by exactly 12.5 on average. Codes 60 and 160 are 20 and 66 % of the video range.
bars() { echo "(60+100*lt(mod(X+4*($1),64),32))"; }
# The moving bars, with black in place of frames FIRST to LAST.
black() { echo "if(between(N,$1,$2),16,$(bars N))"; }
# The moving bars, with a patch of WIDTH x HEIGHT pixels of one CODE on frames FIRST to LAST.
patch() { echo "if(between(N,$4,$5)*lt(X,$1)*lt(Y,$2),$3,$(bars N))"; }
# SLATE frames of a slate, black up to frame AD, then the moving bars.
slated() { echo "if(lt(N,$1),$(bars 0),if(lt(N,$2),16,$(bars N)))"; }

# A sine of FREQUENCY that peaks at LEVEL dBFS.
sine() { echo "pow(10,($2)/20)*sin(2*PI*$1*t)"; }
# A tone on frame FIRST, for FRAMES, of FREQUENCY and LEVEL: cut out of a running one. The edges lie
# half a sample early, so that no rounding adds or takes one.
pop() { echo "between(t+0.00001,($1)/($rate),($1+$2)/($rate))*$(sine "$3" "$4")"; }
# TONE on the left, and on the right at half the level and times FACTOR: they correlate as
# 2 * 0.5 / (1 + 0.25) = 0.8.
pair() { echo "$1|0.5*(${2:-1})*($1)"; }

# Pictures.
rate=25
frames=125
luma=$(bars N)
cb=128
cr=128
pixels=yuv420p
filters=null # After the picture, before the encoder.
tags="-color_range tv -colorspace bt709 -color_primaries bt709 -color_trc bt709"
extension=mov

# Sound: one expression of the time `t` a channel, joined with "|". Empty for none.
sound=
layout=stereo
later=0  # Seconds from the first frame to the sound.
longer=0 # Seconds of sound more than of picture.
codecs="-c:v ffv1 -c:a pcm_s24le"

# A clip of these pictures and this sound, equally long.
clip() {
    local seconds audio=()
    seconds=$(awk "BEGIN { printf \"%.6f\", $frames / ($rate) + ($longer) }")
    if [[ -n $sound ]]; then
        audio=(-itsoffset "$later" -f lavfi
            -i "aevalsrc=exprs='$sound':s=48000:c=$layout:d=$seconds")
    fi
    ffmpeg -v error -nostdin -y \
        -f lavfi -i "color=black:s=192x108:r=$rate,format=$pixels,
            geq=lum='$luma':cb='$cb':cr='$cr',$filters,trim=end_frame=$frames" \
        "${audio[@]}" $codecs $tags "$out/$1.$extension"
}

# The sound of a clip, a stream for each channel.
streams() {
    local channels=$(($(tr -cd '|' <<<"$sound" | wc -c) + 1)) maps=() split="" i
    for ((i = 0; i < channels; ++i)); do
        split+=";[s$i]pan=mono|c0=c${i}[t$i]"
        maps+=(-map "[t$i]")
    done
    split="[0:a]asplit=$channels$(printf '[s%d]' $(seq 0 $((channels - 1))))$split"
    clip whole
    ffmpeg -v error -nostdin -y -i "$out/whole.$extension" -filter_complex "$split" \
        -map 0:v "${maps[@]}" -c:v copy -c:a pcm_s24le "$out/$1.$extension"
    rm "$out/whole.$extension"
}

# Sound alone, of some seconds.
sound_file() {
    ffmpeg -v error -nostdin -y -f lavfi -i "aevalsrc=exprs='$sound':s=48000:c=$layout:d=$seconds" \
        -c:a pcm_s24le "$out/$1.wav"
}
