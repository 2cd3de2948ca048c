#!/bin/sh
n=0
mkdir -p '/a' && mv '/c/d' '/a/d'
n=$((n+1)) && printf '%d' $n > '/t/p'