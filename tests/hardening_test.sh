#!/usr/bin/env bash
true
