#ifndef N0
#ifndef N1
#ifndef N2
#ifndef N3
#ifndef N4
#ifndef N5
#ifndef N6
#ifndef N7
#ifndef N8
#ifndef N9
#ifndef N10
#ifndef N11
#ifndef N12
#ifndef N13
#ifndef N14
#ifndef N15
#ifndef N16
#ifndef N17
#ifndef N18
#ifndef N19
#ifndef N20
#ifndef N21
#ifndef N22
#ifndef N23
#ifndef N24
#ifndef N25
#ifndef N26
#ifndef N27
#ifndef N28
#ifndef N29
#ifndef N30
#ifndef N31
#ifndef N32
#ifndef N33
#ifndef N34
#ifndef N35
#ifndef N36
#ifndef N37
#ifndef N38
#ifndef N39
#ifndef N40
#ifndef N41
#ifndef N42
#ifndef N43
#ifndef N44
#ifndef N45
#ifndef N46
#ifndef N47
#ifndef N48
#ifndef N49
#ifndef N50
#ifndef N51
#ifndef N52
#ifndef N53
#ifndef N54
#ifndef N55
#ifndef N56
#ifndef N57
#ifndef N58
#ifndef N59
#ifndef N60
#ifndef N61
#ifndef N62
#ifndef N63
#ifndef N64
#ifndef N65
#ifndef N66
#ifndef N67
#ifndef N68
#ifndef N69
#ifndef N70
#ifndef N71
#ifndef N72
#ifndef N73
#ifndef N74
#ifndef N75
#ifndef N76
#ifndef N77
#ifndef N78
#ifndef N79
#ifndef N80
#ifndef N81
#ifndef N82
#ifndef N83
#ifndef N84
#ifndef N85
#ifndef N86
#ifndef N87
#ifndef N88
#ifndef N89
#ifndef N90
#ifndef N91
#ifndef N92
#ifndef N93
#ifndef N94
#ifndef N95
#ifndef N96
#ifndef N97
#ifndef N98
#ifndef N99
#ifndef N100
#ifndef N101
#ifndef N102
#ifndef N103
#ifndef N104
#ifndef N105
#ifndef N106
#ifndef N107
#ifndef N108
#ifndef N109
#ifndef N110
#ifndef N111
#ifndef N112
#ifndef N113
#ifndef N114
#ifndef N115
#ifndef N116
#ifndef N117
#ifndef N118
#ifndef N119
#ifndef N120
#ifndef N121
#ifndef N122
#ifndef N123
#ifndef N124
#ifndef N125
#ifndef N126
#ifndef N127
#ifndef N128
#ifndef N129
#ifndef N130
#ifndef N131
#ifndef N132
#ifndef N133
#ifndef N134
#ifndef N135
#ifndef N136
#ifndef N137
#ifndef N138
#ifndef N139
#ifndef N140
#ifndef N141
#ifndef N142
#ifndef N143
#ifndef N144
#ifndef N145
#ifndef N146
#ifndef N147
#ifndef N148
#ifndef N149
#ifndef N150
#ifndef N151
#ifndef N152
#ifndef N153
#ifndef N154
#ifndef N155
#ifndef N156
#ifndef N157
#ifndef N158
#ifndef N159
#ifndef N160
#ifndef N161
#ifndef N162
#ifndef N163
#ifndef N164
#ifndef N165
#ifndef N166
#ifndef N167
#ifndef N168
#ifndef N169
#ifndef N170
#ifndef N171
#ifndef N172
#ifndef N173
#ifndef N174
#ifndef N175
#ifndef N176
#ifndef N177
#ifndef N178
#ifndef N179
#ifndef N180
#ifndef N181
#ifndef N182
#ifndef N183
#ifndef N184
#ifndef N185
#ifndef N186
#ifndef N187
#ifndef N188
#ifndef N189
#ifndef N190
#ifndef N191
#ifndef N192
#ifndef N193
#ifndef N194
#ifndef N195
#ifndef N196
#ifndef N197
#ifndef N198
#ifndef N199
#ifndef N200
#ifndef N201
#ifndef N202
#ifndef N203
#ifndef N204
#ifndef N205
#ifndef N206
#ifndef N207
#ifndef N208
#ifndef N209
#ifndef N210
#ifndef N211
#ifndef N212
#ifndef N213
#ifndef N214
#ifndef N215
#ifndef N216
#ifndef N217
#ifndef N218
#ifndef N219
#ifndef N220
#ifndef N221
#ifndef N222
#ifndef N223
#ifndef N224
#ifndef N225
#ifndef N226
#ifndef N227
#ifndef N228
#ifndef N229
#ifndef N230
#ifndef N231
#ifndef N232
#ifndef N233
#ifndef N234
#ifndef N235
#ifndef N236
#ifndef N237
#ifndef N238
#ifndef N239
#ifndef N240
#ifndef N241
#ifndef N242
#ifndef N243
#ifndef N244
#ifndef N245
#ifndef N246
#ifndef N247
#ifndef N248
#ifndef N249
#ifndef N250
#ifndef N251
#ifndef N252
#ifndef N253
#ifndef N254
#ifndef N255
#ifndef N256
#ifndef N257
#ifndef N258
#ifndef N259
#ifndef N260
#ifndef N261
#ifndef N262
#ifndef N263
#ifndef N264
#ifndef N265
#ifndef N266
#ifndef N267
#ifndef N268
#ifndef N269
#ifndef N270
#ifndef N271
#ifndef N272
#ifndef N273
#ifndef N274
#ifndef N275
#ifndef N276
#ifndef N277
#ifndef N278
#ifndef N279
#ifndef N280
#ifndef N281
#ifndef N282
#ifndef N283
#ifndef N284
#ifndef N285
#ifndef N286
#ifndef N287
#ifndef N288
#ifndef N289
#ifndef N290
#ifndef N291
#ifndef N292
#ifndef N293
#ifndef N294
#ifndef N295
#ifndef N296
#ifndef N297
#ifndef N298
#ifndef N299
x := 1
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
#else
x := 2
#endif
y := 1
